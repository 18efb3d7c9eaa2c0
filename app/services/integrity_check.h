// Finding the references of a Filter that lead nowhere, and reporting them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/filter.h"

namespace zarvo {

/// The Rules and Sets that refer to a missing Set or Function, in one list of names and markers
/// (see the markers in the source); empty when every reference is resolved. Looks at what Rules put
/// in, not at what they look for. Names are compared exactly; a Function call names its Function by
/// the text before the first "(". An entry that repeats an earlier one of the same Rule or Set is
/// left out, even where a missing Function has the name of the Rule that calls it.
[[nodiscard]] std::vector<std::string> CollectFindings(const Filter& filter);

/// The text of the error report: findings as CollectFindings gives them, names byte for byte, each
/// line ended by line_end.
[[nodiscard]] std::string ErrorReport(std::string_view filter_name,
                                      const std::vector<std::string>& findings,
                                      std::string_view line_end);

}  // namespace zarvo
