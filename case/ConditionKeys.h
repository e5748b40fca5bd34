// The keys of the condition tables: the one constant key, and the suffixes
// that follow the language text in the others.
#pragma once

namespace zelvo {
namespace unicode {
namespace conditionkeys {

// The final sigma rule holds in every language, so its key has none.
constexpr char const* kFinalSigma = "Final_Sigma";
constexpr char const* kAfterSoftDotted = " After_Soft_Dotted";
constexpr char const* kMoreAbove = " More_Above";
constexpr char const* kNotBeforeDot = " Not_Before_Dot";
constexpr char const* kAfterI = " After_I";

}  // namespace conditionkeys
}  // namespace unicode
}  // namespace zelvo
