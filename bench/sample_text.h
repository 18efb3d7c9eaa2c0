// Texts for the benchmarks, the same ones in every run.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zarvo {

/// Stands in every SampleText of 4 KiB or more once in about 4 KiB, and nothing like it elsewhere:
/// neither '#' nor a digit occurs outside of it.
inline constexpr std::string_view kMark = "Zyx#9";

/// Prose-like text of exactly this many bytes: lower-case words with the letters of English about
/// as frequent as they are there, sentences that begin with a lower-case letter, lines of about 70
/// bytes, here and there two blanks.
[[nodiscard]] std::string SampleText(std::size_t size);

/// All bytes that a SampleText may contain, but for those in without.
[[nodiscard]] std::string SampleAlphabet(std::string_view without);

}  // namespace zarvo
