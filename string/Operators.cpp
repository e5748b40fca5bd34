// Free operator+ and relational operators of String. The rvalue forms of
// operator+ edit an operand and hand its storage on to the result; the
// relational operators use the unsigned order of compare.
#include <string>
#include <utility>

#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

size_t roomOf(const String& s) { return s.capacity() - s.size(); }

size_t lengthOf(const char32_t* p) {
  return std::char_traits<char32_t>::length(p);
}

bool equalTo(const String& a, const char32_t* p) {
  const size_t n = lengthOf(p);
  return a.size() == n &&
         std::char_traits<char32_t>::compare(a.data(), p, n) == 0;
}

}  // namespace

String operator+(const String& a, const String& b) {
  String result;
  result.reserve(a.size() + b.size());
  result.append(a);
  result.append(b);
  return result;
}

String operator+(const char32_t* p, const String& b) {
  String result(p);
  result.append(b);
  return result;
}

String operator+(char32_t c, const String& b) {
  String result(1, c);
  result.append(b);
  return result;
}

String operator+(const String& a, const char32_t* p) {
  String result(p);
  result.insert(0, a);
  return result;
}

String operator+(const String& a, char32_t c) {
  String result(1, c);
  result.insert(0, a);
  return result;
}

// The rvalue operand is moved into the result only after the edit has
// succeeded, so an exception leaves it holding its value.
String operator+(String&& a, const String& b) {
  a.append(b);
  return String(std::move(a));
}

String operator+(const String& a, String&& b) {
  b.insert(0, a);
  return String(std::move(b));
}

// The result is built in whichever operand has the room for the other
// without reallocating; the left one when both have, or when neither has.
String operator+(String&& a, String&& b) {
  if (b.size() > roomOf(a) && a.size() <= roomOf(b)) {
    b.insert(0, a);
    return String(std::move(b));
  }
  a.append(b);
  return String(std::move(a));
}

String operator+(const char32_t* p, String&& b) {
  b.insert(0, p);
  return String(std::move(b));
}

String operator+(char32_t c, String&& b) {
  b.insert(0, 1, c);
  return String(std::move(b));
}

String operator+(String&& a, const char32_t* p) {
  a.append(p);
  return String(std::move(a));
}

String operator+(String&& a, char32_t c) {
  a.push_back(c);
  return String(std::move(a));
}

bool operator==(const String& a, const String& b) {
  return a.size() == b.size() && a.compare(b) == 0;
}
bool operator==(const char32_t* p, const String& b) { return equalTo(b, p); }
bool operator==(const String& a, const char32_t* p) { return equalTo(a, p); }

bool operator!=(const String& a, const String& b) { return !(a == b); }
bool operator!=(const char32_t* p, const String& b) { return !(p == b); }
bool operator!=(const String& a, const char32_t* p) { return !(a == p); }

bool operator<(const String& a, const String& b) { return a.compare(b) < 0; }
bool operator<(const char32_t* p, const String& b) { return b.compare(p) > 0; }
bool operator<(const String& a, const char32_t* p) { return a.compare(p) < 0; }

bool operator>(const String& a, const String& b) { return b < a; }
bool operator>(const char32_t* p, const String& b) { return b < p; }
bool operator>(const String& a, const char32_t* p) { return p < a; }

bool operator<=(const String& a, const String& b) { return !(b < a); }
bool operator<=(const char32_t* p, const String& b) { return !(b < p); }
bool operator<=(const String& a, const char32_t* p) { return !(p < a); }

bool operator>=(const String& a, const String& b) { return !(a < b); }
bool operator>=(const char32_t* p, const String& b) { return !(p < b); }
bool operator>=(const String& a, const char32_t* p) { return !(a < p); }

}  // namespace unicode
}  // namespace zelvo
