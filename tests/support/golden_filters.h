// What one reads in the golden files, written down again as filters.
#pragma once

#include <cstdint>
#include <string>

#include "model/filter.h"

namespace zarvo::testing {

Subpattern Shown(Subpattern subpattern, std::string render_text);

/// A record of another version has nothing but its number.
template <typename Record>
Record OfVersion(std::int32_t version) {
  Record record;
  record.RecordVersion = version;
  return record;
}

Rule RuleOf(std::string name, int probability, Pattern pattern, int source, std::int32_t from,
            std::int32_t to, std::string set_name, Pattern replacement, std::int32_t strict,
            std::int32_t once);

Filter ExpectedV1();
Filter ExpectedV2();
Filter ExpectedV3();
Filter ExpectedV4();
Filter ExpectedV5();
Filter ExpectedV6();
/// Of format 7, for which 6 stands in.
Filter ExpectedV7();
Filter ExpectedOtherRecords();
Filter ExpectedOtherLists();
Filter ExpectedMostSignificant(int first, int second, int fourth);
Filter ExpectedWorkedExample();
Filter WithDescription(std::string description);
Filter ExpectedAllBytes();
Filter ExpectedZeroBytes();
/// Not one field as a new filter has it, nor as one of the files has it.
Filter FilledFilter();

}  // namespace zarvo::testing
