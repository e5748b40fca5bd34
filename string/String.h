// zelvo::unicode::String: a sequence of 32-bit code points with the interface
// of a standard string, and the library's one text type.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>

namespace zelvo {
namespace unicode {

/// A text as a sequence of code points, with the interface of
/// `std::u32string`.
///
/// One element is one code point, and every position, count and iterator
/// counts elements. Any 32-bit value may be held, U+0000 and bad code points
/// included: nothing validates on the way in, and only the bad code point
/// members tell them apart. Bytes and 16-bit units exist only in the
/// `from...` and `to...` conversions.
///
/// The class holds one `std::u32string`, and what that string chooses stays
/// its choice: `max_size`, the capacity after `reserve` or `shrink_to_fit`,
/// short-string storage and the text of its exceptions. A position past the
/// end throws `std::out_of_range` and leaves the object as it was; a position
/// equal to the size is valid, and a count past the end is cut down (`npos`
/// means all of it). A result longer than `max_size()` throws
/// `std::length_error`, exhausted memory `std::bad_alloc`, and the object is
/// then as it was. Assignments and the editing members that take a position
/// return the object itself. One object may be read by many threads or
/// written by one.
class String {
 public:
  /// Iterators of the held `std::u32string`, valid by its rules.
  ///@{
  using iterator = std::u32string::iterator;
  using const_iterator = std::u32string::const_iterator;
  using reverse_iterator = std::u32string::reverse_iterator;
  using const_reverse_iterator = std::u32string::const_reverse_iterator;
  ///@}

  /// The no-position result and the to-the-end count: all bits set.
  static const size_t npos;

  /// An empty string.
  String() = default;
  /// A deep copy.
  String(const String&) = default;
  /// Takes over the storage of `other`, which ends empty.
  String(String&& other) noexcept;
  /// The elements of `s` from `pos`, at most `n` of them.
  /// @throws std::out_of_range if `pos > s.size()`.
  String(const String& s, size_t pos, size_t n = npos);
  /// The elements of `p` up to, not including, its first U+0000. `p` must
  /// not be null.
  String(const char32_t* p);
  /// `n` copies of `c`. There is no constructor from a single `char32_t`.
  String(size_t n, char32_t c);
  /// A copy of the range.
  String(const_iterator first, const_iterator last);
  /// The listed elements, a U+0000 among them included.
  String(std::initializer_list<char32_t> list);
  /// Decodes `utf8` as fromUTF8String() does, never rejecting anything.
  String(const std::string& utf8);
  /// Decodes `utf16` as fromUTF16String() does, never rejecting anything.
  String(const std::u16string& utf16);
  /// A plain copy of the elements of `utf32`.
  String(const std::u32string& utf32);
  /// Takes over the storage of `utf32`, which ends empty; copies nothing.
  String(std::u32string&& utf32) noexcept;
  /// One element for each `wchar_t` of `wide`, as fromWString() does.
  String(const std::wstring& wide);
  /// Releases the storage.
  ~String() = default;

  /// Replaces the content by a copy of the elements of another string.
  String& operator=(const String&) = default;
  /// Takes over the storage of `other`, which ends empty; assigning the
  /// object to itself changes nothing.
  String& operator=(String&& other) noexcept;
  /// Replaces the content by the listed elements.
  String& operator=(std::initializer_list<char32_t> list);
  /// Replaces the content by the elements of `p` up to its first U+0000.
  String& operator=(const char32_t* p);
  /// The content becomes the one element `c`.
  String& operator=(char32_t c);
  /// The same as the move assignment.
  String& assign(String&& other) noexcept;
  /// Replaces the content by the listed elements.
  String& assign(std::initializer_list<char32_t> list);
  /// Replaces the content by the elements of `p` up to its first U+0000.
  String& assign(const char32_t* p);
  /// Replaces the content by `n` copies of `c`.
  String& assign(size_t n, char32_t c);
  /// Replaces the content by a copy of the elements of `s`, which may be the
  /// object itself.
  String& assign(const String& s);
  /// Replaces the content by the elements of `s` from `pos`, at most `n`.
  /// @throws std::out_of_range if `pos > s.size()`.
  String& assign(const String& s, size_t pos, size_t n = npos);
  /// Replaces the content by a copy of the range.
  String& assign(const_iterator first, const_iterator last);

  /// Iterators of the held string; the forms without `const` are mutable.
  ///@{
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
  ///@}

  /// The element at `pos`.
  /// @throws std::out_of_range if `pos >= size()`, so `at(size())` throws.
  ///@{
  char32_t& at(size_t pos);
  const char32_t& at(size_t pos) const;
  ///@}
  /// The element at `pos`, with no check: `pos` must be below `size()`.
  ///@{
  char32_t& operator[](size_t pos);
  const char32_t& operator[](size_t pos) const;
  ///@}
  /// The first element, with no check: the string must not be empty.
  ///@{
  char32_t& front();
  const char32_t& front() const;
  ///@}
  /// The last element, with no check: the string must not be empty.
  ///@{
  char32_t& back();
  const char32_t& back() const;
  ///@}
  /// The contiguous storage, always followed by one U+0000 behind the last
  /// element. There is no mutable form and no `c_str`.
  const char32_t* data() const;

  /// The number of elements.
  ///@{
  size_t size() const;
  size_t length() const;
  ///@}
  /// The largest size, as the held string's standard library sets it.
  size_t max_size() const;
  /// Whether the size is 0.
  bool empty() const;
  /// Shortens to `n` elements, or lengthens with U+0000 elements.
  /// @throws std::length_error if `n > max_size()`.
  void resize(size_t n);
  /// Shortens to `n` elements, or lengthens with copies of `c`.
  /// @throws std::length_error if `n > max_size()`.
  void resize(size_t n, char32_t c);
  /// The held string's `reserve`: the capacity that follows is what its
  /// standard library makes of the request.
  /// @throws std::length_error if `n > max_size()`.
  void reserve(size_t n);
  /// The capacity of the held string.
  size_t capacity() const;
  /// Gives spare storage back, as far as the held string does.
  void shrink_to_fit() noexcept;
  /// Removes every element and keeps the storage.
  void clear();
  /// Exchanges the whole content with `other`, storage included.
  void swap(String& other) noexcept;

  /// Replaces the content by `utf8` decoded, all of its bytes, a 0x00 too.
  /// The decoder never rejects: a byte that cannot begin a sequence is
  /// skipped, the bytes after a lead are taken whatever they are (C3 41 gives
  /// U+00C1), overlong forms, surrogates and values up to 0x1FFFFF are kept,
  /// and a sequence cut short by the end of the input is dropped. A byte
  /// order mark is an ordinary U+FEFF.
  void fromUTF8String(const std::string& utf8);
  /// The content as UTF-8. Surrogates and values above 0x10FFFF are dropped
  /// without a word, so the result may be shorter than expected.
  std::string toUTF8String() const;

  /// Replaces the content by `utf16` decoded, in the host's byte order. The
  /// decoder never rejects: a surrogate unit of either kind is joined with
  /// whatever unit follows it (D800 0041 gives U+2441), which can give
  /// surrogates and values up to 0x211FFF, and a surrogate at the very end is
  /// dropped.
  void fromUTF16String(const std::u16string& utf16);
  /// The content as UTF-16, at least one unit for each element. A surrogate
  /// element leaves as a well-formed pair for its value + 0x100000, and a
  /// value above 0x10FFFF as the lone unit 0xD800.
  std::u16string toUTF16String() const;

  /// Makes the content a copy of `utf32`, element for element; given the
  /// object's own toUTF32String(), it does nothing.
  void fromUTF32String(const std::u32string& utf32);
  /// The held string itself, not a copy: later edits show through it, and
  /// it lives as long as the object.
  const std::u32string& toUTF32String() const;
  /// Makes the content one element for each `wchar_t`, its 32 bits unchanged:
  /// a surrogate pair stays two elements, and a negative `wchar_t` becomes a
  /// value above 0x7FFFFFFF.
  void fromWString(const std::wstring& wide);
  /// One `wchar_t` for each element, its 32 bits unchanged.
  std::wstring toWString() const;
  /// Exactly fromUTF8String(): the native encoding is UTF-8, whatever the
  /// locale.
  void fromNativeString(const std::string& native);
  /// Exactly toUTF8String().
  std::string toNativeString() const;

  /// Whether any element is a bad code point: a surrogate (0xD800 to 0xDFFF)
  /// or a value above 0x10FFFF. Noncharacters, unassigned code points and
  /// U+FFFD are not bad. Nothing in the library cleans text unasked.
  bool hasBadCodePoints() const;
  /// Removes every bad code point; the others keep their order, and the
  /// capacity stays.
  void stripBadCodePoints();
  /// Removes every U+FFFD, wherever it came from; bad code points stay.
  void stripReplacementCodePoints();
  /// Overwrites every bad code point with U+FFFD; the size stays.
  void replaceBadCodePoints();

  /// Appends all of `s`, which may be the object itself.
  String& append(const String& s);
  /// Appends the elements of `s` from `pos`, at most `n` of them.
  /// @throws std::out_of_range if `pos > s.size()`.
  String& append(const String& s, size_t pos, size_t n = npos);
  /// Appends the elements of `p` up to its first U+0000.
  String& append(const char32_t* p);
  /// Appends `n` copies of `c`.
  String& append(size_t n, char32_t c);
  /// Appends a copy of the range.
  String& append(const_iterator first, const_iterator last);
  /// Appends the listed elements, a U+0000 among them included.
  String& append(std::initializer_list<char32_t> list);
  /// The same as append() with the same argument; `c` is one element,
  /// whatever its value.
  ///@{
  String& operator+=(const String& s);
  String& operator+=(const char32_t* p);
  String& operator+=(char32_t c);
  String& operator+=(std::initializer_list<char32_t> list);
  ///@}
  /// Appends one element.
  void push_back(char32_t c);
  /// Removes the last element, with no check: the string must not be empty.
  void pop_back();

  /// Inserts all of `s` before position `pos`; `s` may be the object itself.
  /// @throws std::out_of_range if `pos > size()`.
  String& insert(size_t pos, const String& s);
  /// Inserts the elements of `s` from `pos2`, at most `n`, before `pos`.
  /// @throws std::out_of_range if `pos2 > s.size()`, tested first, or if
  /// `pos > size()`; the exception is that of the first test that fails.
  String& insert(size_t pos, const String& s, size_t pos2, size_t n = npos);
  /// Inserts the elements of `p` up to its first U+0000 before `pos`.
  /// @throws std::out_of_range if `pos > size()`.
  String& insert(size_t pos, const char32_t* p);
  /// Inserts `n` copies of `c` before `pos`.
  /// @throws std::out_of_range if `pos > size()`.
  String& insert(size_t pos, size_t n, char32_t c);
  /// Inserts `c` before `it`, which must be an iterator of this string.
  /// Returns an iterator to the inserted element.
  iterator insert(const_iterator it, char32_t c);
  /// Inserts `n` copies of `c` before `it`; returns an iterator to the first
  /// of them, or `it` when `n` is 0.
  /// @throws std::out_of_range if `it` lies past the end.
  iterator insert(const_iterator it, size_t n, char32_t c);
  /// Inserts a copy of the range before `it`, unchecked; returns an iterator
  /// to the first inserted element, or `it` when there is none.
  iterator insert(const_iterator it, const_iterator first, const_iterator last);
  /// Inserts the listed elements before `it`, unchecked; returns an iterator
  /// to the first of them, or `it` when the list is empty.
  iterator insert(const_iterator it, std::initializer_list<char32_t> list);

  /// Cuts the string off at `pos`: everything from there to the end goes.
  /// @throws std::out_of_range if `pos > size()`.
  String& erase(size_t pos = 0);
  /// Removes up to `n` elements from `pos`.
  /// @throws std::out_of_range if `pos > size()`.
  String& erase(size_t pos, size_t n);
  /// Removes the element at `it`, or nothing at `end()`; returns an iterator
  /// to the same place, which now holds the following element.
  /// @throws std::out_of_range if `it` lies past the end.
  iterator erase(const_iterator it);
  /// Removes the range; returns an iterator to the place of `first`.
  /// @throws std::out_of_range if `first` lies past the end.
  iterator erase(const_iterator first, const_iterator last);

  /// Puts all of `s` in place of up to `n` elements from `pos`; `s` may be
  /// the object itself.
  /// @throws std::out_of_range if `pos > size()`.
  String& replace(size_t pos, size_t n, const String& s);
  /// Puts the elements of `s` from `pos2`, at most `n2`, in place of up to
  /// `n` elements from `pos`.
  /// @throws std::out_of_range if `pos2 > s.size()`, tested first, or if
  /// `pos > size()`; the exception is that of the first test that fails.
  String& replace(size_t pos, size_t n, const String& s, size_t pos2,
                  size_t n2 = npos);
  /// Puts the elements of `p` up to its first U+0000 in place of up to `n`
  /// elements from `pos`.
  /// @throws std::out_of_range if `pos > size()`.
  String& replace(size_t pos, size_t n, const char32_t* p);
  /// Puts `n2` copies of `c` in place of up to `n` elements from `pos`.
  /// @throws std::out_of_range if `pos > size()`.
  String& replace(size_t pos, size_t n, size_t n2, char32_t c);
  /// The position form of replace() on `first - begin()` and `last - first`.
  /// @throws std::out_of_range if `first` lies past the end.
  ///@{
  String& replace(const_iterator first, const_iterator last, const String& s);
  String& replace(const_iterator first, const_iterator last, const char32_t* p);
  String& replace(const_iterator first, const_iterator last, size_t n2,
                  char32_t c);
  ///@}
  /// Puts a copy of the source range in place of `[first, last)`, unchecked.
  /// The source must not lie in this string, as the target is overwritten
  /// while it is read.
  ///@{
  String& replace(const_iterator first, const_iterator last,
                  const_iterator first2, const_iterator last2);
  String& replace(const_iterator first, const_iterator last, iterator first2,
                  iterator last2);
  ///@}
  /// Puts the listed elements in place of `[first, last)`, unchecked.
  String& replace(const_iterator first, const_iterator last,
                  std::initializer_list<char32_t> list);

  /// The start of the first occurrence that starts at or after `pos`, or
  /// `npos`. Matching is equality of elements, with no normalization, case
  /// or locale; the search members never throw.
  ///@{
  size_t find(const String& s, size_t pos = 0) const;
  size_t find(const char32_t* p, size_t pos = 0) const;
  size_t find(char32_t c, size_t pos = 0) const;
  ///@}
  /// The start of the last occurrence that starts at or before `pos`, or
  /// `npos`.
  ///@{
  size_t rfind(const String& s, size_t pos = npos) const;
  size_t rfind(const char32_t* p, size_t pos = npos) const;
  size_t rfind(char32_t c, size_t pos = npos) const;
  ///@}
  /// The first element at or after `pos` that is in the set, or `npos`.
  ///@{
  size_t find_first_of(const String& s, size_t pos = 0) const;
  size_t find_first_of(const char32_t* p, size_t pos = 0) const;
  size_t find_first_of(char32_t c, size_t pos = 0) const;
  ///@}
  /// The last element at or before `pos` that is in the set, or `npos`.
  ///@{
  size_t find_last_of(const String& s, size_t pos = npos) const;
  size_t find_last_of(const char32_t* p, size_t pos = npos) const;
  size_t find_last_of(char32_t c, size_t pos = npos) const;
  ///@}
  /// The first element at or after `pos` that is not in the set, or `npos`.
  ///@{
  size_t find_first_not_of(const String& s, size_t pos = 0) const;
  size_t find_first_not_of(const char32_t* p, size_t pos = 0) const;
  size_t find_first_not_of(char32_t c, size_t pos = 0) const;
  ///@}
  /// The last element at or before `pos` that is not in the set, or `npos`.
  ///@{
  size_t find_last_not_of(const String& s, size_t pos = npos) const;
  size_t find_last_not_of(const char32_t* p, size_t pos = npos) const;
  size_t find_last_not_of(char32_t c, size_t pos = npos) const;
  ///@}

  /// A new string of the elements from `pos`, at most `n` of them.
  /// @throws std::out_of_range if `pos > size()`.
  String substr(size_t pos = 0, size_t n = npos) const;

  /// Compares the whole string with `s`: -1, 0 or 1. Elements are compared
  /// as unsigned 32-bit values up to the first difference, and a shorter
  /// prefix comes first.
  int compare(const String& s) const;
  /// Compares the elements from `pos`, at most `n`, with all of `s`.
  /// @throws std::out_of_range if `pos > size()`.
  int compare(size_t pos, size_t n, const String& s) const;
  /// Compares the elements from `pos`, at most `n`, with those of `s` from
  /// `pos2`, at most `n2`.
  /// @throws std::out_of_range if `pos2 > s.size()`, tested first, or if
  /// `pos > size()`; the exception is that of the first test that fails.
  int compare(size_t pos, size_t n, const String& s, size_t pos2,
              size_t n2 = npos) const;
  /// Compares the whole string with the elements of `p` up to its first
  /// U+0000.
  int compare(const char32_t* p) const;
  /// Compares the elements from `pos`, at most `n`, with those of `p` up to
  /// its first U+0000.
  /// @throws std::out_of_range if `pos > size()`.
  int compare(size_t pos, size_t n, const char32_t* p) const;

 private:
  std::u32string str_;
};

/// The same as `a.swap(b)`.
void swap(String& a, String& b) noexcept;

/// A new string: the elements of the left operand, then those of the right.
/// A pointer ends at its first U+0000; a `char32_t` is one element, whatever
/// its value. An rvalue operand gives its storage to the result and ends
/// empty; of two rvalues, the left gives it unless only the right has room
/// for the other, and the one that does not keeps its value. Throws only
/// `std::length_error` or `std::bad_alloc`, and an rvalue operand is then not
/// emptied.
///@{
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
///@}

/// Relational operators in the order of String::compare(): element by
/// element as unsigned 32-bit values, so 0xFFFFFFFF sorts last and two
/// canonically equivalent texts differ. A pointer ends at its first U+0000.
/// They never throw.
///@{
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
///@}

}  // namespace unicode
}  // namespace zelvo
