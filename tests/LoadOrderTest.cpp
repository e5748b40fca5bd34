// The order in which the library's two static objects come and go: the code
// page registry is built and filled before the character tables are built,
// and is destroyed after them. ExitHandlerHook.cpp shows the entry of each
// destructor as an exit handler, which follows its constructor at once, and
// the run of each handler at exit; the library's behaviour is unchanged.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string>

#include "ExitHandlerHook.h"
#include "Unicode.h"

namespace {

using zelvo::unicode::CodePageTranslator;
using zelvo::unicode::gTransformTables;

// What the hook showed while the library loaded. Plain values set before any
// code runs, since the library's static initialisers run before this
// program's.
constexpr std::size_t kNotSeen = static_cast<std::size_t>(-1);
int gFinishedCount = 0;
int gRegistryFinishedAs = 0;  // 1 for the first of the two, 2 for the second
int gTablesFinishedAs = 0;
std::size_t gPagesWhenRegistryFinished = kNotSeen;
std::size_t gPagesWhenTablesFinished = kNotSeen;

// Set in the child process of the unload test, which then exits.
bool gTellRuns = false;
bool gRegistryDestroyed = false;

bool isRegistry(const void* object) {
  return object == &CodePageTranslator::codePages;
}

bool isTables(const void* object) { return object == &gTransformTables; }

void tell(const std::string& text) {
  // Straight to the file descriptor: the streams may be gone at exit.
  ssize_t written = write(STDERR_FILENO, text.data(), text.size());
  static_cast<void>(written);
}

}  // namespace

void exitHandlerEntered(void* object) {
  if (isRegistry(object)) {
    gRegistryFinishedAs = ++gFinishedCount;
    gPagesWhenRegistryFinished = CodePageTranslator::codePages.size();
  } else if (isTables(object)) {
    gTablesFinishedAs = ++gFinishedCount;
    // The registry may be read only once it stands.
    if (gRegistryFinishedAs != 0)
      gPagesWhenTablesFinished = CodePageTranslator::codePages.size();
  }
}

void exitHandlerRunning(void* object) {
  if (!gTellRuns) return;
  if (isTables(object)) {
    tell(gRegistryDestroyed
             ? std::string("tables destroyed after the registry; ")
             : "tables destroyed while the registry holds " +
                   std::to_string(CodePageTranslator::codePages.size()) +
                   " pages; ");
  } else if (isRegistry(object)) {
    gRegistryDestroyed = true;
    tell("registry destroyed; ");
  }
}

namespace {

TEST(LoadOrderTest, TheHookSawBothObjectsBuilt) {
  EXPECT_NE(gRegistryFinishedAs, 0);
  EXPECT_NE(gTablesFinishedAs, 0);
}

TEST(LoadOrderTest, TheRegistryIsBuiltBeforeTheTables) {
  EXPECT_EQ(gRegistryFinishedAs, 1);
  EXPECT_EQ(gTablesFinishedAs, 2);
}

TEST(LoadOrderTest, TheRegistryIsBuiltEmptyBeforeItsFillerRuns) {
  EXPECT_EQ(gPagesWhenRegistryFinished, 0u);
}

TEST(LoadOrderTest, TheBuiltInPagesAreRegisteredBeforeTheTablesAreBuilt) {
  EXPECT_EQ(gPagesWhenTablesFinished, 2u);
}

TEST(LoadOrderTest, ExitDestroysTheTablesBeforeTheRegistry) {
  EXPECT_EXIT(
      {
        gTellRuns = true;
        std::exit(0);
      },
      testing::ExitedWithCode(0),
      "tables destroyed while the registry holds 2 pages; "
      "registry destroyed; ");
}

}  // namespace
