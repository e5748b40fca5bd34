// The interface of String checked at compile time: member types, the exact
// overloads and their return types, what does not exist, and what does not
// throw. The runtime tests below only confirm the few values a
// static_assert cannot reach.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>

#include "string/String.h"

namespace {

using zelvo::unicode::String;
using Iterator = std::u32string::iterator;
using ConstIterator = std::u32string::const_iterator;
using List = std::initializer_list<char32_t>;

// Detection idiom: Op<T> is well formed only if the expression it names is.
template <typename, template <typename> class, typename = void>
struct Detect : std::false_type {};
template <typename T, template <typename> class Op>
struct Detect<T, Op, std::void_t<Op<T>>> : std::true_type {};
template <typename T, template <typename> class Op>
constexpr bool kHas = Detect<T, Op>::value;

// ---- Member types --------------------------------------------------------

static_assert(std::is_same_v<String::iterator, std::u32string::iterator>);
static_assert(
    std::is_same_v<String::const_iterator, std::u32string::const_iterator>);
static_assert(
    std::is_same_v<String::reverse_iterator, std::u32string::reverse_iterator>);
static_assert(std::is_same_v<String::const_reverse_iterator,
                             std::u32string::const_reverse_iterator>);
static_assert(std::is_same_v<decltype(String::npos), const size_t>);

// ---- Shape of the class --------------------------------------------------

static_assert(!std::is_polymorphic_v<String>);
static_assert(sizeof(String) == sizeof(std::u32string));

// ---- Construction --------------------------------------------------------

static_assert(std::is_default_constructible_v<String>);
static_assert(std::is_copy_constructible_v<String>);
static_assert(std::is_nothrow_move_constructible_v<String>);
static_assert(std::is_constructible_v<String, const String&, size_t, size_t>);
static_assert(std::is_constructible_v<String, const String&, size_t>);
static_assert(std::is_constructible_v<String, const char32_t*>);
static_assert(std::is_constructible_v<String, size_t, char32_t>);
static_assert(std::is_constructible_v<String, ConstIterator, ConstIterator>);
static_assert(std::is_constructible_v<String, List>);
static_assert(std::is_constructible_v<String, const std::string&>);
static_assert(std::is_constructible_v<String, const std::u16string&>);
static_assert(std::is_constructible_v<String, const std::u32string&>);
static_assert(std::is_nothrow_constructible_v<String, std::u32string&&>);
static_assert(std::is_constructible_v<String, const std::wstring&>);
// There is no constructor from a single element.
static_assert(!std::is_constructible_v<String, char32_t>);
static_assert(std::is_destructible_v<String>);

// ---- Assignment ----------------------------------------------------------

static_assert(std::is_copy_assignable_v<String>);
static_assert(std::is_nothrow_move_assignable_v<String>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>() = String()), String&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>() = std::declval<String&>()),
                   String&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>() = List{}), String&>);
static_assert(std::is_same_v<decltype(std::declval<String&>() = U""), String&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>() = U'a'), String&>);
static_assert(noexcept(std::declval<String&>().assign(String())));
static_assert(
    std::is_same_v<
        decltype(static_cast<String& (String::*)(String&&)>(&String::assign)),
        String& (String::*)(String&&)>);
static_assert(std::is_same_v<
              decltype(static_cast<String& (String::*)(List)>(&String::assign)),
              String& (String::*)(List)>);
static_assert(
    std::is_same_v<decltype(static_cast<String& (String::*)(const char32_t*)>(
                       &String::assign)),
                   String& (String::*)(const char32_t*)>);
static_assert(
    std::is_same_v<decltype(static_cast<String& (String::*)(size_t, char32_t)>(
                       &String::assign)),
                   String& (String::*)(size_t, char32_t)>);
static_assert(
    std::is_same_v<decltype(static_cast<String& (String::*)(const String&)>(
                       &String::assign)),
                   String& (String::*)(const String&)>);
static_assert(
    std::is_same_v<
        decltype(static_cast<String& (String::*)(const String&, size_t,
                                                 size_t)>(&String::assign)),
        String& (String::*)(const String&, size_t, size_t)>);
static_assert(
    std::is_same_v<
        decltype(static_cast<String& (String::*)(ConstIterator, ConstIterator)>(
            &String::assign)),
        String& (String::*)(ConstIterator, ConstIterator)>);

// ---- Iterators -----------------------------------------------------------

static_assert(std::is_same_v<decltype(std::declval<String&>().begin()),
                             String::iterator>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().begin()),
                             String::const_iterator>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().end()), String::iterator>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().end()),
                             String::const_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().rbegin()),
                             String::reverse_iterator>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().rbegin()),
                             String::const_reverse_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().rend()),
                             String::reverse_iterator>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().rend()),
                             String::const_reverse_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().cbegin()),
                             String::const_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().cend()),
                             String::const_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().crbegin()),
                             String::const_reverse_iterator>);
static_assert(std::is_same_v<decltype(std::declval<String&>().crend()),
                             String::const_reverse_iterator>);

// ---- Element access ------------------------------------------------------

static_assert(
    std::is_same_v<decltype(std::declval<String&>().at(0)), char32_t&>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().at(0)),
                             const char32_t&>);
static_assert(std::is_same_v<decltype(std::declval<String&>()[0]), char32_t&>);
static_assert(std::is_same_v<decltype(std::declval<const String&>()[0]),
                             const char32_t&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().front()), char32_t&>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().front()),
                             const char32_t&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().back()), char32_t&>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().back()),
                             const char32_t&>);
// data() is const only, even on a mutable object.
static_assert(
    std::is_same_v<decltype(std::declval<String&>().data()), const char32_t*>);
static_assert(std::is_same_v<decltype(std::declval<const String&>().data()),
                             const char32_t*>);

template <typename T>
using CStrOp = decltype(std::declval<T&>().c_str());
template <typename T>
using CopyOp = decltype(&T::copy);
template <typename T>
using GetAllocatorOp = decltype(std::declval<T&>().get_allocator());
template <typename T>
using MutableDataOp = decltype(static_cast<char32_t* (T::*)()>(&T::data));
static_assert(kHas<std::u32string, CStrOp>, "the detector itself works");
static_assert(!kHas<String, CStrOp>);
static_assert(!kHas<String, CopyOp>);
static_assert(!kHas<String, GetAllocatorOp>);
static_assert(!kHas<String, MutableDataOp>);

// ---- Capacity ------------------------------------------------------------

static_assert(
    std::is_same_v<decltype(std::declval<const String&>().size()), size_t>);
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().length()), size_t>);
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().max_size()), size_t>);
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().empty()), bool>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().resize(1)), void>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().resize(1, U'a')), void>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().reserve(1)), void>);
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().capacity()), size_t>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().shrink_to_fit()), void>);
static_assert(noexcept(std::declval<String&>().shrink_to_fit()));
static_assert(std::is_same_v<decltype(std::declval<String&>().clear()), void>);
static_assert(
    std::is_same_v<
        decltype(std::declval<String&>().swap(std::declval<String&>())), void>);
static_assert(noexcept(std::declval<String&>().swap(std::declval<String&>())));
static_assert(noexcept(zelvo::unicode::swap(std::declval<String&>(),
                                            std::declval<String&>())));
static_assert(std::is_nothrow_swappable_v<String>);

// ---- Bad code points -----------------------------------------------------

static_assert(
    std::is_same_v<decltype(std::declval<const String&>().hasBadCodePoints()),
                   bool>);
static_assert(std::is_same_v<
              decltype(std::declval<String&>().stripBadCodePoints()), void>);
static_assert(
    std::is_same_v<
        decltype(std::declval<String&>().stripReplacementCodePoints()), void>);
static_assert(std::is_same_v<
              decltype(std::declval<String&>().replaceBadCodePoints()), void>);

// ---- Editing: the exact overloads ----------------------------------------

// Each cast names one overload exactly; it fails to compile if that overload
// is missing or has another signature or return type.
[[maybe_unused]] constexpr auto kAppendString =
    static_cast<String& (String::*)(const String&)>(&String::append);
[[maybe_unused]] constexpr auto kAppendSubstring =
    static_cast<String& (String::*)(const String&, size_t, size_t)>(
        &String::append);
[[maybe_unused]] constexpr auto kAppendPointer =
    static_cast<String& (String::*)(const char32_t*)>(&String::append);
[[maybe_unused]] constexpr auto kAppendCount =
    static_cast<String& (String::*)(size_t, char32_t)>(&String::append);
[[maybe_unused]] constexpr auto kAppendRange =
    static_cast<String& (String::*)(ConstIterator, ConstIterator)>(
        &String::append);
[[maybe_unused]] constexpr auto kAppendList =
    static_cast<String& (String::*)(List)>(&String::append);
[[maybe_unused]] constexpr auto kPlusEqualString =
    static_cast<String& (String::*)(const String&)>(&String::operator+=);
[[maybe_unused]] constexpr auto kPlusEqualPointer =
    static_cast<String& (String::*)(const char32_t*)>(&String::operator+=);
[[maybe_unused]] constexpr auto kPlusEqualElement =
    static_cast<String& (String::*)(char32_t)>(&String::operator+=);
[[maybe_unused]] constexpr auto kPlusEqualList =
    static_cast<String& (String::*)(List)>(&String::operator+=);
[[maybe_unused]] constexpr auto kPushBack =
    static_cast<void (String::*)(char32_t)>(&String::push_back);
[[maybe_unused]] constexpr auto kPopBack =
    static_cast<void (String::*)()>(&String::pop_back);

[[maybe_unused]] constexpr auto kInsertString =
    static_cast<String& (String::*)(size_t, const String&)>(&String::insert);
[[maybe_unused]] constexpr auto kInsertSubstring =
    static_cast<String& (String::*)(size_t, const String&, size_t, size_t)>(
        &String::insert);
[[maybe_unused]] constexpr auto kInsertPointer =
    static_cast<String& (String::*)(size_t, const char32_t*)>(&String::insert);
[[maybe_unused]] constexpr auto kInsertCount =
    static_cast<String& (String::*)(size_t, size_t, char32_t)>(&String::insert);
[[maybe_unused]] constexpr auto kInsertElementAt =
    static_cast<Iterator (String::*)(ConstIterator, char32_t)>(&String::insert);
[[maybe_unused]] constexpr auto kInsertCountAt =
    static_cast<Iterator (String::*)(ConstIterator, size_t, char32_t)>(
        &String::insert);
[[maybe_unused]] constexpr auto kInsertRangeAt = static_cast<Iterator (
    String::*)(ConstIterator, ConstIterator, ConstIterator)>(&String::insert);
[[maybe_unused]] constexpr auto kInsertListAt =
    static_cast<Iterator (String::*)(ConstIterator, List)>(&String::insert);

[[maybe_unused]] constexpr auto kEraseFrom =
    static_cast<String& (String::*)(size_t)>(&String::erase);
[[maybe_unused]] constexpr auto kEraseCount =
    static_cast<String& (String::*)(size_t, size_t)>(&String::erase);
[[maybe_unused]] constexpr auto kEraseAt =
    static_cast<Iterator (String::*)(ConstIterator)>(&String::erase);
[[maybe_unused]] constexpr auto kEraseRange =
    static_cast<Iterator (String::*)(ConstIterator, ConstIterator)>(
        &String::erase);

[[maybe_unused]] constexpr auto kReplaceString =
    static_cast<String& (String::*)(size_t, size_t, const String&)>(
        &String::replace);
[[maybe_unused]] constexpr auto kReplaceSubstring =
    static_cast<String& (String::*)(size_t, size_t, const String&, size_t,
                                    size_t)>(&String::replace);
[[maybe_unused]] constexpr auto kReplacePointer =
    static_cast<String& (String::*)(size_t, size_t, const char32_t*)>(
        &String::replace);
[[maybe_unused]] constexpr auto kReplaceCount =
    static_cast<String& (String::*)(size_t, size_t, size_t, char32_t)>(
        &String::replace);
[[maybe_unused]] constexpr auto kReplaceStringAt = static_cast<String& (
    String::*)(ConstIterator, ConstIterator, const String&)>(&String::replace);
[[maybe_unused]] constexpr auto kReplacePointerAt =
    static_cast<String& (String::*)(ConstIterator, ConstIterator,
                                    const char32_t*)>(&String::replace);
[[maybe_unused]] constexpr auto kReplaceCountAt =
    static_cast<String& (String::*)(ConstIterator, ConstIterator, size_t,
                                    char32_t)>(&String::replace);
[[maybe_unused]] constexpr auto kReplaceConstRange =
    static_cast<String& (String::*)(ConstIterator, ConstIterator, ConstIterator,
                                    ConstIterator)>(&String::replace);
[[maybe_unused]] constexpr auto kReplaceMutableRange =
    static_cast<String& (String::*)(ConstIterator, ConstIterator, Iterator,
                                    Iterator)>(&String::replace);
[[maybe_unused]] constexpr auto kReplaceList =
    static_cast<String& (String::*)(ConstIterator, ConstIterator, List)>(
        &String::replace);

// No counted pointer form in any family, and no std::u32string form.
template <typename T>
using CountedAppendOp =
    decltype(static_cast<T& (T::*)(const char32_t*, size_t)>(&T::append));
template <typename T>
using CountedInsertOp =
    decltype(static_cast<T& (T::*)(size_t, const char32_t*, size_t)>(
        &T::insert));
template <typename T>
using CountedReplaceOp =
    decltype(static_cast<T& (T::*)(size_t, size_t, const char32_t*, size_t)>(
        &T::replace));
template <typename T>
using CountedAssignOp =
    decltype(static_cast<T& (T::*)(const char32_t*, size_t)>(&T::assign));
template <typename T>
using CountedFindOp =
    decltype(static_cast<size_t (T::*)(const char32_t*, size_t, size_t) const>(
        &T::find));
template <typename T>
using CountedCompareOp =
    decltype(static_cast<int (T::*)(size_t, size_t, const char32_t*, size_t)
                             const>(&T::compare));
template <typename T>
using U32AppendOp =
    decltype(static_cast<T& (T::*)(const std::u32string&)>(&T::append));
template <typename T>
using U32FindOp =
    decltype(static_cast<size_t (T::*)(const std::u32string&, size_t) const>(
        &T::find));
static_assert(kHas<std::u32string, CountedAppendOp>,
              "the detector itself works");
static_assert(!kHas<String, CountedAppendOp>);
static_assert(!kHas<String, CountedInsertOp>);
static_assert(!kHas<String, CountedReplaceOp>);
static_assert(!kHas<String, CountedAssignOp>);
static_assert(!kHas<String, CountedFindOp>);
static_assert(!kHas<String, CountedCompareOp>);
static_assert(!kHas<String, U32AppendOp>);
static_assert(!kHas<String, U32FindOp>);

// Default arguments, as on the standard string.
static_assert(
    std::is_same_v<decltype(std::declval<String&>().erase()), String&>);
static_assert(std::is_same_v<
              decltype(std::declval<String&>().append(String(), 0)), String&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().insert(0, String(), 0)),
                   String&>);
static_assert(
    std::is_same_v<decltype(std::declval<String&>().replace(0, 0, String(), 0)),
                   String&>);

// ---- Searching, substr and compare ---------------------------------------

#define ZELVO_SEARCH_FAMILY(name)                                     \
  [[maybe_unused]] constexpr auto k_##name##_String =                 \
      static_cast<size_t (String::*)(const String&, size_t) const>(   \
          &String::name);                                             \
  [[maybe_unused]] constexpr auto k_##name##_Pointer =                \
      static_cast<size_t (String::*)(const char32_t*, size_t) const>( \
          &String::name);                                             \
  [[maybe_unused]] constexpr auto k_##name##_Element =                \
      static_cast<size_t (String::*)(char32_t, size_t) const>(&String::name);

ZELVO_SEARCH_FAMILY(find)
ZELVO_SEARCH_FAMILY(rfind)
ZELVO_SEARCH_FAMILY(find_first_of)
ZELVO_SEARCH_FAMILY(find_last_of)
ZELVO_SEARCH_FAMILY(find_first_not_of)
ZELVO_SEARCH_FAMILY(find_last_not_of)
#undef ZELVO_SEARCH_FAMILY

// Forward searches default to position 0, backward ones to npos; that the
// defaults are these values is checked at run time below.
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().find(U'a')), size_t>);
static_assert(std::is_same_v<
              decltype(std::declval<const String&>().find_last_not_of(U"a")),
              size_t>);

[[maybe_unused]] constexpr auto kSubstr =
    static_cast<String (String::*)(size_t, size_t) const>(&String::substr);
static_assert(
    std::is_same_v<decltype(std::declval<const String&>().substr()), String>);

[[maybe_unused]] constexpr auto kCompareString =
    static_cast<int (String::*)(const String&) const>(&String::compare);
[[maybe_unused]] constexpr auto kComparePart =
    static_cast<int (String::*)(size_t, size_t, const String&) const>(
        &String::compare);
[[maybe_unused]] constexpr auto kCompareParts = static_cast<int (String::*)(
    size_t, size_t, const String&, size_t, size_t) const>(&String::compare);
[[maybe_unused]] constexpr auto kComparePointer =
    static_cast<int (String::*)(const char32_t*) const>(&String::compare);
[[maybe_unused]] constexpr auto kComparePartPointer =
    static_cast<int (String::*)(size_t, size_t, const char32_t*) const>(
        &String::compare);

// ---- Free operators ------------------------------------------------------

namespace zu = zelvo::unicode;

[[maybe_unused]] constexpr auto kPlus1 =
    static_cast<String (*)(const String&, const String&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus2 =
    static_cast<String (*)(const char32_t*, const String&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus3 =
    static_cast<String (*)(char32_t, const String&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus4 =
    static_cast<String (*)(const String&, const char32_t*)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus5 =
    static_cast<String (*)(const String&, char32_t)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus6 =
    static_cast<String (*)(String&&, const String&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus7 =
    static_cast<String (*)(const String&, String&&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus8 =
    static_cast<String (*)(String&&, String&&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus9 =
    static_cast<String (*)(const char32_t*, String&&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus10 =
    static_cast<String (*)(char32_t, String&&)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus11 =
    static_cast<String (*)(String&&, const char32_t*)>(&zu::operator+);
[[maybe_unused]] constexpr auto kPlus12 =
    static_cast<String (*)(String&&, char32_t)>(&zu::operator+);

#define ZELVO_RELATIONAL_FAMILY(op, name)                                      \
  [[maybe_unused]] constexpr auto k##name##1 =                                 \
      static_cast<bool (*)(const String&, const String&)>(&zu::operator op);   \
  [[maybe_unused]] constexpr auto k##name##2 =                                 \
      static_cast<bool (*)(const char32_t*, const String&)>(&zu::operator op); \
  [[maybe_unused]] constexpr auto k##name##3 =                                 \
      static_cast<bool (*)(const String&, const char32_t*)>(&zu::operator op);

ZELVO_RELATIONAL_FAMILY(==, Equal)
ZELVO_RELATIONAL_FAMILY(!=, NotEqual)
ZELVO_RELATIONAL_FAMILY(<, Less)
ZELVO_RELATIONAL_FAMILY(>, Greater)
ZELVO_RELATIONAL_FAMILY(<=, LessEqual)
ZELVO_RELATIONAL_FAMILY(>=, GreaterEqual)
#undef ZELVO_RELATIONAL_FAMILY

// No relational form with a single element or a std::u32string.
template <typename T>
using EqualElementOp =
    decltype(static_cast<bool (*)(const String&, T)>(&zu::operator==));
template <typename T>
using LessU32Op =
    decltype(static_cast<bool (*)(const String&, const T&)>(&zu::operator<));
static_assert(kHas<const char32_t*, EqualElementOp>,
              "the detector itself works");
static_assert(!kHas<char32_t, EqualElementOp>);
static_assert(!kHas<std::u32string, LessU32Op>);
template <typename T>
using CompareWithElementOp = decltype(std::declval<const T&>() == U'a');
static_assert(!kHas<String, CompareWithElementOp>);

static_assert(std::is_same_v<decltype(String() + String()), String>);
static_assert(std::is_same_v<decltype(String() < U""), bool>);

// ---- The few facts only a running program can show -----------------------

TEST(StringInterface, NposIsAllBitsSet) { EXPECT_EQ(String::npos, ~size_t{0}); }

TEST(StringInterface, ForwardSearchesDefaultToTheStart) {
  const String s{U'a', U'b', U'a'};
  EXPECT_EQ(s.find(U'a'), 0u);
  EXPECT_EQ(s.find_first_of(U'a'), 0u);
  EXPECT_EQ(s.find_first_not_of(U'b'), 0u);
}

TEST(StringInterface, BackwardSearchesDefaultToTheEnd) {
  const String s{U'a', U'b', U'a'};
  EXPECT_EQ(s.rfind(U'a'), 2u);
  EXPECT_EQ(s.find_last_of(U'a'), 2u);
  EXPECT_EQ(s.find_last_not_of(U'b'), 2u);
}

// Without a pointer-and-count constructor, a pointer and a number make a
// String of the pointer and then take the substring from that position.
TEST(StringInterface, PointerAndNumberIsASubstringNotACount) {
  const String s(U"abcd", 1);
  EXPECT_EQ(std::u32string(s.begin(), s.end()), U"bcd");
}

TEST(StringInterface, CountsDefaultToEverything) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.substr().size(), 3u);
  EXPECT_EQ(s.substr(1).size(), 2u);
  EXPECT_EQ(String(s, 1).size(), 2u);
  String t{U'x', U'y'};
  t.erase();
  EXPECT_TRUE(t.empty());
  t.append(s, 1);
  EXPECT_EQ(t.size(), 2u);
}

}  // namespace
