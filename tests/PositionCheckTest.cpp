// The order of the two position checks of the members that take a position in
// each of two strings: the position in the argument is checked first, so when
// both are past the end the std::out_of_range is the one for the argument's
// position. Its text is the held standard string's, and it names the position
// and the size, so the two orders give different texts. (A standard library
// whose text names neither, such as libc++, gives the same text for both.)
#include <gtest/gtest.h>

#include <string>

#include "ExceptionText.h"
#include "string/String.h"

namespace {

using zelvo::unicode::String;

// A target of five elements and an argument of three, with a position past
// the end of each.
const std::u32string kTarget = U"abcde";
const std::u32string kArgument = U"xyz";
constexpr size_t kPastTarget = 7;
constexpr size_t kPastArgument = 4;

// The text that the held standard string gives for `pos` past its end.
std::string standardText(const std::u32string& held, size_t pos) {
  return outOfRangeText([&] { static_cast<void>(held.substr(pos, 0)); });
}

TEST(PositionCheckTest, InsertReportsTheArgumentPositionFirst) {
  String s(kTarget);
  const String t(kArgument);
  EXPECT_EQ(outOfRangeText([&] { s.insert(kPastTarget, t, kPastArgument, 1); }),
            standardText(kArgument, kPastArgument));
}

TEST(PositionCheckTest, ReplaceReportsTheArgumentPositionFirst) {
  String s(kTarget);
  const String t(kArgument);
  EXPECT_EQ(
      outOfRangeText([&] { s.replace(kPastTarget, 1, t, kPastArgument, 1); }),
      standardText(kArgument, kPastArgument));
}

TEST(PositionCheckTest, CompareReportsTheArgumentPositionFirst) {
  const String s(kTarget);
  const String t(kArgument);
  EXPECT_EQ(outOfRangeText([&] {
              static_cast<void>(s.compare(kPastTarget, 1, t, kPastArgument, 1));
            }),
            standardText(kArgument, kPastArgument));
}

TEST(PositionCheckTest, BothPositionsPastTheEndLeaveTheObjectAsItWas) {
  String s(kTarget);
  const String t(kArgument);
  outOfRangeText([&] { s.insert(kPastTarget, t, kPastArgument, 1); });
  outOfRangeText([&] { s.replace(kPastTarget, 1, t, kPastArgument, 1); });
  EXPECT_EQ(s.toUTF32String(), kTarget);
  EXPECT_EQ(t.toUTF32String(), kArgument);
}

}  // namespace
