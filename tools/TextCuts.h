// Where a text may be cut so that its pieces, each mapped on its own, give
// what the whole text gives: the rules of the commands that read text.
#pragma once

namespace zelvo {
namespace tool {

struct Invocation;

// Whether a text may be cut between the code points `before` and `after`.
using CutRule = bool (*)(char32_t before, char32_t after,
                         const Invocation& inv);

// Anywhere: for the operations that take one code point at a time.
bool cutAnywhere(char32_t before, char32_t after, const Invocation& inv);

// For the four normal forms and their checks.
bool cutForNormalForms(char32_t before, char32_t after, const Invocation& inv);

// For upper and lower: full case mapping in any language, or anywhere with
// --simple.
bool cutForCasing(char32_t before, char32_t after, const Invocation& inv);

// The canonical combining class, 0 for a starter, from the library's table.
int combiningClass(char32_t c);

}  // namespace tool
}  // namespace zelvo
