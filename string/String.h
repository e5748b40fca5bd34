// zelvo::unicode::String: a sequence of 32-bit code points with the interface
// of a standard string, and the library's one text type.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>

namespace zelvo {
namespace unicode {

// One element is one code point, and every position, count and iterator
// counts elements. Any 32-bit value may be held: the decoders let malformed
// input through as odd values, and only the bad code point members tell them
// apart. The class is a thin shell around one std::u32string; what it adds
// is the conversions at the boundary and the handling of bad code points.
class String {
 public:
  using iterator = std::u32string::iterator;
  using const_iterator = std::u32string::const_iterator;
  using reverse_iterator = std::u32string::reverse_iterator;
  using const_reverse_iterator = std::u32string::const_reverse_iterator;

  // The no-position result and the to-the-end count: all bits set.
  static const size_t npos;

  // Construction. There is no constructor from a single char32_t.
  String() = default;
  String(const String&) = default;
  String(String&& other) noexcept;
  String(const String& s, size_t pos, size_t n = npos);
  String(const char32_t* p);
  String(size_t n, char32_t c);
  String(const_iterator first, const_iterator last);
  String(std::initializer_list<char32_t> list);
  String(const std::string& utf8);
  String(const std::u16string& utf16);
  String(const std::u32string& utf32);
  String(std::u32string&& utf32) noexcept;
  String(const std::wstring& wide);
  ~String() = default;

  // Assignment; every form returns the object itself.
  String& operator=(const String&) = default;
  String& operator=(String&& other) noexcept;
  String& operator=(std::initializer_list<char32_t> list);
  String& operator=(const char32_t* p);
  String& operator=(char32_t c);
  String& assign(String&& other) noexcept;
  String& assign(std::initializer_list<char32_t> list);
  String& assign(const char32_t* p);
  String& assign(size_t n, char32_t c);
  String& assign(const String& s);
  String& assign(const String& s, size_t pos, size_t n = npos);
  String& assign(const_iterator first, const_iterator last);

  // Iterators of the held string.
  iterator begin();
  const_iterator begin() const;
  iterator end();
  const_iterator end() const;
  reverse_iterator rbegin();
  const_reverse_iterator rbegin() const;
  reverse_iterator rend();
  const_reverse_iterator rend() const;
  const_iterator cbegin() const;
  const_iterator cend() const;
  const_reverse_iterator crbegin() const;
  const_reverse_iterator crend() const;

  // Element access. at() checks the position; the others do not.
  char32_t& at(size_t pos);
  const char32_t& at(size_t pos) const;
  char32_t& operator[](size_t pos);
  const char32_t& operator[](size_t pos) const;
  char32_t& front();
  const char32_t& front() const;
  char32_t& back();
  const char32_t& back() const;
  // The contiguous storage, always followed by one U+0000 behind the last
  // element. There is no mutable form and no c_str.
  const char32_t* data() const;

  // Capacity.
  size_t size() const;
  size_t length() const;
  size_t max_size() const;
  bool empty() const;
  void resize(size_t n);
  void resize(size_t n, char32_t c);
  void reserve(size_t n);
  size_t capacity() const;
  void shrink_to_fit() noexcept;
  void clear();
  void swap(String& other) noexcept;

  // UTF-8. The decoder never rejects: it classifies each sequence by its
  // lead byte alone. The encoder drops surrogates and values above U+10FFFF.
  void fromUTF8String(const std::string& utf8);
  std::string toUTF8String() const;

  // UTF-16, in the host's byte order. Any surrogate unit is joined with the
  // unit behind it; the encoder writes something for every element.
  void fromUTF16String(const std::u16string& utf16);
  std::u16string toUTF16String() const;

  // UTF-32 and wide strings are straight copies; the native encoding is
  // UTF-8. toUTF32String hands out the held string itself.
  void fromUTF32String(const std::u32string& utf32);
  const std::u32string& toUTF32String() const;
  void fromWString(const std::wstring& wide);
  std::wstring toWString() const;
  void fromNativeString(const std::string& native);
  std::string toNativeString() const;

  // Bad code points: surrogates (0xD800 to 0xDFFF) and values above
  // 0x10FFFF. Nothing else in the library cleans text; these are on request.
  bool hasBadCodePoints() const;
  void stripBadCodePoints();
  void stripReplacementCodePoints();
  void replaceBadCodePoints();

  // Editing. Position forms return the object, iterator forms of insert and
  // erase an iterator. A pointer argument always ends at its first U+0000.
  String& append(const String& s);
  String& append(const String& s, size_t pos, size_t n = npos);
  String& append(const char32_t* p);
  String& append(size_t n, char32_t c);
  String& append(const_iterator first, const_iterator last);
  String& append(std::initializer_list<char32_t> list);
  String& operator+=(const String& s);
  String& operator+=(const char32_t* p);
  String& operator+=(char32_t c);
  String& operator+=(std::initializer_list<char32_t> list);
  void push_back(char32_t c);
  void pop_back();

  String& insert(size_t pos, const String& s);
  String& insert(size_t pos, const String& s, size_t pos2, size_t n = npos);
  String& insert(size_t pos, const char32_t* p);
  String& insert(size_t pos, size_t n, char32_t c);
  iterator insert(const_iterator it, char32_t c);
  iterator insert(const_iterator it, size_t n, char32_t c);
  iterator insert(const_iterator it, const_iterator first, const_iterator last);
  iterator insert(const_iterator it, std::initializer_list<char32_t> list);

  String& erase(size_t pos = 0);
  String& erase(size_t pos, size_t n);
  iterator erase(const_iterator it);
  iterator erase(const_iterator first, const_iterator last);

  String& replace(size_t pos, size_t n, const String& s);
  String& replace(size_t pos, size_t n, const String& s, size_t pos2,
                  size_t n2 = npos);
  String& replace(size_t pos, size_t n, const char32_t* p);
  String& replace(size_t pos, size_t n, size_t n2, char32_t c);
  String& replace(const_iterator first, const_iterator last, const String& s);
  String& replace(const_iterator first, const_iterator last, const char32_t* p);
  String& replace(const_iterator first, const_iterator last, size_t n2,
                  char32_t c);
  String& replace(const_iterator first, const_iterator last,
                  const_iterator first2, const_iterator last2);
  String& replace(const_iterator first, const_iterator last, iterator first2,
                  iterator last2);
  String& replace(const_iterator first, const_iterator last,
                  std::initializer_list<char32_t> list);

  // Searching: element equality only, no normalization, case or locale.
  size_t find(const String& s, size_t pos = 0) const;
  size_t find(const char32_t* p, size_t pos = 0) const;
  size_t find(char32_t c, size_t pos = 0) const;
  size_t rfind(const String& s, size_t pos = npos) const;
  size_t rfind(const char32_t* p, size_t pos = npos) const;
  size_t rfind(char32_t c, size_t pos = npos) const;
  size_t find_first_of(const String& s, size_t pos = 0) const;
  size_t find_first_of(const char32_t* p, size_t pos = 0) const;
  size_t find_first_of(char32_t c, size_t pos = 0) const;
  size_t find_last_of(const String& s, size_t pos = npos) const;
  size_t find_last_of(const char32_t* p, size_t pos = npos) const;
  size_t find_last_of(char32_t c, size_t pos = npos) const;
  size_t find_first_not_of(const String& s, size_t pos = 0) const;
  size_t find_first_not_of(const char32_t* p, size_t pos = 0) const;
  size_t find_first_not_of(char32_t c, size_t pos = 0) const;
  size_t find_last_not_of(const String& s, size_t pos = npos) const;
  size_t find_last_not_of(const char32_t* p, size_t pos = npos) const;
  size_t find_last_not_of(char32_t c, size_t pos = npos) const;

  String substr(size_t pos = 0, size_t n = npos) const;

  // Comparison as unsigned 32-bit values; the result is exactly -1, 0 or 1.
  int compare(const String& s) const;
  int compare(size_t pos, size_t n, const String& s) const;
  int compare(size_t pos, size_t n, const String& s, size_t pos2,
              size_t n2 = npos) const;
  int compare(const char32_t* p) const;
  int compare(size_t pos, size_t n, const char32_t* p) const;

 private:
  std::u32string str_;
};

void swap(String& a, String& b) noexcept;

// Concatenation. The rvalue forms take over the storage of an rvalue operand.
String operator+(const String& a, const String& b);
String operator+(const char32_t* p, const String& b);
String operator+(char32_t c, const String& b);
String operator+(const String& a, const char32_t* p);
String operator+(const String& a, char32_t c);
String operator+(String&& a, const String& b);
String operator+(const String& a, String&& b);
String operator+(String&& a, String&& b);
String operator+(const char32_t* p, String&& b);
String operator+(char32_t c, String&& b);
String operator+(String&& a, const char32_t* p);
String operator+(String&& a, char32_t c);

// Relational operators, in the unsigned order of code point values.
bool operator==(const String& a, const String& b);
bool operator==(const char32_t* p, const String& b);
bool operator==(const String& a, const char32_t* p);
bool operator!=(const String& a, const String& b);
bool operator!=(const char32_t* p, const String& b);
bool operator!=(const String& a, const char32_t* p);
bool operator<(const String& a, const String& b);
bool operator<(const char32_t* p, const String& b);
bool operator<(const String& a, const char32_t* p);
bool operator>(const String& a, const String& b);
bool operator>(const char32_t* p, const String& b);
bool operator>(const String& a, const char32_t* p);
bool operator<=(const String& a, const String& b);
bool operator<=(const char32_t* p, const String& b);
bool operator<=(const String& a, const char32_t* p);
bool operator>=(const String& a, const String& b);
bool operator>=(const char32_t* p, const String& b);
bool operator>=(const String& a, const char32_t* p);

}  // namespace unicode
}  // namespace zelvo
