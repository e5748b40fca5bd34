// Searching, substr and compare of String: plain element equality and the
// unsigned order of 32-bit values, with no normalization, case or locale.
#include "string/PositionCheck.h"
#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

// The held string may answer with any negative or positive number; the
// library promises exactly -1, 0 or 1.
int sign(int result) { return (result > 0) - (result < 0); }

}  // namespace

size_t String::find(const String& s, size_t pos) const {
  return str_.find(s.str_, pos);
}

size_t String::find(const char32_t* p, size_t pos) const {
  return str_.find(p, pos);
}

size_t String::find(char32_t c, size_t pos) const { return str_.find(c, pos); }

size_t String::rfind(const String& s, size_t pos) const {
  return str_.rfind(s.str_, pos);
}

size_t String::rfind(const char32_t* p, size_t pos) const {
  return str_.rfind(p, pos);
}

size_t String::rfind(char32_t c, size_t pos) const {
  return str_.rfind(c, pos);
}

size_t String::find_first_of(const String& s, size_t pos) const {
  return str_.find_first_of(s.str_, pos);
}

size_t String::find_first_of(const char32_t* p, size_t pos) const {
  return str_.find_first_of(p, pos);
}

size_t String::find_first_of(char32_t c, size_t pos) const {
  return str_.find_first_of(c, pos);
}

size_t String::find_last_of(const String& s, size_t pos) const {
  return str_.find_last_of(s.str_, pos);
}

size_t String::find_last_of(const char32_t* p, size_t pos) const {
  return str_.find_last_of(p, pos);
}

size_t String::find_last_of(char32_t c, size_t pos) const {
  return str_.find_last_of(c, pos);
}

size_t String::find_first_not_of(const String& s, size_t pos) const {
  return str_.find_first_not_of(s.str_, pos);
}

size_t String::find_first_not_of(const char32_t* p, size_t pos) const {
  return str_.find_first_not_of(p, pos);
}

size_t String::find_first_not_of(char32_t c, size_t pos) const {
  return str_.find_first_not_of(c, pos);
}

size_t String::find_last_not_of(const String& s, size_t pos) const {
  return str_.find_last_not_of(s.str_, pos);
}

size_t String::find_last_not_of(const char32_t* p, size_t pos) const {
  return str_.find_last_not_of(p, pos);
}

size_t String::find_last_not_of(char32_t c, size_t pos) const {
  return str_.find_last_not_of(c, pos);
}

String String::substr(size_t pos, size_t n) const {
  return String(*this, pos, n);
}

int String::compare(const String& s) const {
  return sign(str_.compare(s.str_));
}

int String::compare(size_t pos, size_t n, const String& s) const {
  checkPosition(str_, pos);
  return sign(str_.compare(pos, n, s.str_));
}

int String::compare(size_t pos, size_t n, const String& s, size_t pos2,
                    size_t n2) const {
  checkPosition(s.str_, pos2);
  checkPosition(str_, pos);
  return sign(str_.compare(pos, n, s.str_, pos2, n2));
}

int String::compare(const char32_t* p) const { return sign(str_.compare(p)); }

int String::compare(size_t pos, size_t n, const char32_t* p) const {
  checkPosition(str_, pos);
  return sign(str_.compare(pos, n, p));
}

}  // namespace unicode
}  // namespace zelvo
