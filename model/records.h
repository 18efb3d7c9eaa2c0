// The serialise operation of each record: writes the object to an archive or reads it from one.
#pragma once

#include "model/archive.h"
#include "model/filter.h"

namespace zarvo {

// Each begins with the record's own version. Where that is not 1 nothing follows: a loaded object
// keeps its fields, a stored one is that number alone. Storing a Pattern of which no Subpattern is
// chosen as most significant makes the automatic choice first and keeps it. Loading a list empties
// it before its elements are read, and keeps the elements read before an error.
void Serialize(Archive& archive, Subpattern& subpattern);
void Serialize(Archive& archive, Pattern& pattern);
void Serialize(Archive& archive, Rule& rule);
void Serialize(Archive& archive, Set& set);
void Serialize(Archive& archive, Function& function);
void Serialize(Archive& archive, RuleList& rules);
void Serialize(Archive& archive, SetList& sets);
void Serialize(Archive& archive, FunctionList& functions);

}  // namespace zarvo
