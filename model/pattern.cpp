#include "model/pattern.h"

namespace zarvo {
namespace {

std::size_t Weight(const Subpattern& subpattern) {
  constexpr std::size_t kCharacterWeight = 10;
  switch (subpattern.Kind) {
    case SubpatternKind::String:
      return kCharacterWeight * subpattern.Contents.size();
    case SubpatternKind::CharacterCode:
      return kCharacterWeight;
    case SubpatternKind::CharacterList:
      return subpattern.Contents.empty() ? 0 : kCharacterWeight / subpattern.Contents.size();
    case SubpatternKind::NegatedCharacterList:
    case SubpatternKind::Function:
      break;
  }
  return 0;
}

}  // namespace

std::int32_t Pattern::ComputeMostSignificant() const {
  std::size_t best_weight = 0;
  std::int32_t best = kNotChosen;
  for (std::size_t i = 0; i < Subpatterns.size(); ++i) {
    const std::size_t weight = Weight(Subpatterns[i]);
    if (weight > best_weight) {
      best_weight = weight;
      best = static_cast<std::int32_t>(i);
    }
  }
  return best;
}

std::size_t Pattern::Length() const {
  std::size_t length = 0;
  for (const Subpattern& subpattern : Subpatterns) length += subpattern.Width();
  return length;
}

std::string DisplayForm(const Pattern& pattern) {
  std::string shown;
  for (const Subpattern& subpattern : pattern.Subpatterns) shown += DisplayForm(subpattern);
  return shown;
}

}  // namespace zarvo
