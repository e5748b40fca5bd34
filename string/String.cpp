// Construction, assignment, iterators, element access and capacity of
// String: each member hands its work to the one held std::u32string.
#include "string/String.h"

#include <utility>

namespace zelvo {
namespace unicode {

const size_t String::npos = static_cast<size_t>(-1);

// A move leaves the source empty rather than in the unspecified state a
// moved-from standard string may be in.
String::String(String&& other) noexcept : str_(std::move(other.str_)) {
  other.str_.clear();
}

String::String(const String& s, size_t pos, size_t n) : str_(s.str_, pos, n) {}

String::String(const char32_t* p) : str_(p) {}

String::String(size_t n, char32_t c) : str_(n, c) {}

String::String(const_iterator first, const_iterator last) : str_(first, last) {}

String::String(std::initializer_list<char32_t> list) : str_(list) {}

String& String::operator=(String&& other) noexcept {
  return assign(std::move(other));
}

// The source's storage goes into a temporary that then trades places with
// the held string, so the old storage is released with the temporary instead
// of being handed back to the source.
String& String::assign(String&& other) noexcept {
  if (this != &other) {
    std::u32string taken(std::move(other.str_));
    other.str_.clear();
    str_.swap(taken);
  }
  return *this;
}

String& String::operator=(std::initializer_list<char32_t> list) {
  str_.assign(list);
  return *this;
}

String& String::operator=(const char32_t* p) {
  str_.assign(p);
  return *this;
}

String& String::operator=(char32_t c) {
  str_.assign(1, c);
  return *this;
}

String& String::assign(std::initializer_list<char32_t> list) {
  str_.assign(list);
  return *this;
}

String& String::assign(const char32_t* p) {
  str_.assign(p);
  return *this;
}

String& String::assign(size_t n, char32_t c) {
  str_.assign(n, c);
  return *this;
}

String& String::assign(const String& s) {
  str_.assign(s.str_);
  return *this;
}

String& String::assign(const String& s, size_t pos, size_t n) {
  str_.assign(s.str_, pos, n);
  return *this;
}

String& String::assign(const_iterator first, const_iterator last) {
  str_.assign(first, last);
  return *this;
}

String::iterator String::begin() { return str_.begin(); }
String::const_iterator String::begin() const { return str_.begin(); }
String::iterator String::end() { return str_.end(); }
String::const_iterator String::end() const { return str_.end(); }
String::reverse_iterator String::rbegin() { return str_.rbegin(); }
String::const_reverse_iterator String::rbegin() const { return str_.rbegin(); }
String::reverse_iterator String::rend() { return str_.rend(); }
String::const_reverse_iterator String::rend() const { return str_.rend(); }
String::const_iterator String::cbegin() const { return str_.cbegin(); }
String::const_iterator String::cend() const { return str_.cend(); }
String::const_reverse_iterator String::crbegin() const {
  return str_.crbegin();
}
String::const_reverse_iterator String::crend() const { return str_.crend(); }

char32_t& String::at(size_t pos) { return str_.at(pos); }
const char32_t& String::at(size_t pos) const { return str_.at(pos); }
char32_t& String::operator[](size_t pos) { return str_[pos]; }
const char32_t& String::operator[](size_t pos) const { return str_[pos]; }
char32_t& String::front() { return str_.front(); }
const char32_t& String::front() const { return str_.front(); }
char32_t& String::back() { return str_.back(); }
const char32_t& String::back() const { return str_.back(); }
const char32_t* String::data() const { return str_.data(); }

size_t String::size() const { return str_.size(); }
size_t String::length() const { return str_.length(); }
size_t String::max_size() const { return str_.max_size(); }
bool String::empty() const { return str_.empty(); }
void String::resize(size_t n) { str_.resize(n); }
void String::resize(size_t n, char32_t c) { str_.resize(n, c); }
void String::reserve(size_t n) { str_.reserve(n); }
size_t String::capacity() const { return str_.capacity(); }
void String::shrink_to_fit() noexcept { str_.shrink_to_fit(); }
void String::clear() { str_.clear(); }
void String::swap(String& other) noexcept { str_.swap(other.str_); }

void swap(String& a, String& b) noexcept { a.swap(b); }

}  // namespace unicode
}  // namespace zelvo
