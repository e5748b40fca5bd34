// Editing members of String: append, insert, erase and replace. Positions
// are checked before anything changes, so a std::out_of_range leaves the
// object as it was; counts are cut down to what is there.
#include "string/PositionCheck.h"
#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

// The range forms of replace walk target and source together: overwrite
// while both last, then insert what is left of the source or erase what is
// left of the target.
template <typename Source>
void replaceByWalk(std::u32string& held, size_t pos, size_t n, Source first2,
                   Source last2) {
  std::u32string::iterator target = held.begin() + pos;
  std::u32string::iterator targetEnd = target + n;
  while (target != targetEnd && first2 != last2) {
    *target = *first2;
    ++target;
    ++first2;
  }
  if (first2 != last2) {
    held.insert(target, first2, last2);
  } else if (target != targetEnd) {
    held.erase(target, targetEnd);
  }
}

}  // namespace

// A String argument may be the object itself: the held string's own members
// read their argument as if copied first, whatever reallocation happens.
String& String::append(const String& s) {
  str_.append(s.str_);
  return *this;
}

String& String::append(const String& s, size_t pos, size_t n) {
  str_.append(s.str_, pos, n);
  return *this;
}

String& String::append(const char32_t* p) {
  str_.append(p);
  return *this;
}

String& String::append(size_t n, char32_t c) {
  str_.append(n, c);
  return *this;
}

String& String::append(const_iterator first, const_iterator last) {
  str_.append(first, last);
  return *this;
}

String& String::append(std::initializer_list<char32_t> list) {
  str_.append(list);
  return *this;
}

String& String::operator+=(const String& s) { return append(s); }

String& String::operator+=(const char32_t* p) { return append(p); }

String& String::operator+=(char32_t c) {
  str_.push_back(c);
  return *this;
}

String& String::operator+=(std::initializer_list<char32_t> list) {
  return append(list);
}

void String::push_back(char32_t c) { str_.push_back(c); }

void String::pop_back() { str_.pop_back(); }

String& String::insert(size_t pos, const String& s) {
  checkPosition(str_, pos);
  str_.insert(pos, s.str_);
  return *this;
}

String& String::insert(size_t pos, const String& s, size_t pos2, size_t n) {
  checkPosition(s.str_, pos2);
  checkPosition(str_, pos);
  str_.insert(pos, s.str_, pos2, n);
  return *this;
}

String& String::insert(size_t pos, const char32_t* p) {
  checkPosition(str_, pos);
  str_.insert(pos, p);
  return *this;
}

String& String::insert(size_t pos, size_t n, char32_t c) {
  checkPosition(str_, pos);
  str_.insert(pos, n, c);
  return *this;
}

String::iterator String::insert(const_iterator it, char32_t c) {
  return str_.insert(it, c);
}

String::iterator String::insert(const_iterator it, size_t n, char32_t c) {
  const size_t pos = static_cast<size_t>(it - str_.cbegin());
  insert(pos, n, c);
  return str_.begin() + pos;
}

String::iterator String::insert(const_iterator it, const_iterator first,
                                const_iterator last) {
  return str_.insert(it, first, last);
}

String::iterator String::insert(const_iterator it,
                                std::initializer_list<char32_t> list) {
  return str_.insert(it, list);
}

String& String::erase(size_t pos) {
  checkPosition(str_, pos);
  str_.erase(pos);
  return *this;
}

String& String::erase(size_t pos, size_t n) {
  checkPosition(str_, pos);
  str_.erase(pos, n);
  return *this;
}

// At end() the count of one is cut down to nothing, so end() comes back.
String::iterator String::erase(const_iterator it) {
  const size_t pos = static_cast<size_t>(it - str_.cbegin());
  erase(pos, 1);
  return str_.begin() + pos;
}

String::iterator String::erase(const_iterator first, const_iterator last) {
  const size_t pos = static_cast<size_t>(first - str_.cbegin());
  erase(pos, static_cast<size_t>(last - first));
  return str_.begin() + pos;
}

String& String::replace(size_t pos, size_t n, const String& s) {
  checkPosition(str_, pos);
  str_.replace(pos, n, s.str_);
  return *this;
}

String& String::replace(size_t pos, size_t n, const String& s, size_t pos2,
                        size_t n2) {
  checkPosition(s.str_, pos2);
  checkPosition(str_, pos);
  str_.replace(pos, n, s.str_, pos2, n2);
  return *this;
}

String& String::replace(size_t pos, size_t n, const char32_t* p) {
  checkPosition(str_, pos);
  str_.replace(pos, n, p);
  return *this;
}

String& String::replace(size_t pos, size_t n, size_t n2, char32_t c) {
  checkPosition(str_, pos);
  str_.replace(pos, n, n2, c);
  return *this;
}

String& String::replace(const_iterator first, const_iterator last,
                        const String& s) {
  return replace(static_cast<size_t>(first - str_.cbegin()),
                 static_cast<size_t>(last - first), s);
}

String& String::replace(const_iterator first, const_iterator last,
                        const char32_t* p) {
  return replace(static_cast<size_t>(first - str_.cbegin()),
                 static_cast<size_t>(last - first), p);
}

String& String::replace(const_iterator first, const_iterator last, size_t n2,
                        char32_t c) {
  return replace(static_cast<size_t>(first - str_.cbegin()),
                 static_cast<size_t>(last - first), n2, c);
}

String& String::replace(const_iterator first, const_iterator last,
                        const_iterator first2, const_iterator last2) {
  replaceByWalk(str_, static_cast<size_t>(first - str_.cbegin()),
                static_cast<size_t>(last - first), first2, last2);
  return *this;
}

String& String::replace(const_iterator first, const_iterator last,
                        iterator first2, iterator last2) {
  replaceByWalk(str_, static_cast<size_t>(first - str_.cbegin()),
                static_cast<size_t>(last - first), first2, last2);
  return *this;
}

String& String::replace(const_iterator first, const_iterator last,
                        std::initializer_list<char32_t> list) {
  replaceByWalk(str_, static_cast<size_t>(first - str_.cbegin()),
                static_cast<size_t>(last - first), list.begin(), list.end());
  return *this;
}

}  // namespace unicode
}  // namespace zelvo
