#include "model/subpattern.h"

namespace zarvo {
namespace {

std::string BracketedList(std::string_view opening, std::string_view characters) {
  std::string shown(opening);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (i > 0) shown += ", ";
    shown += characters[i];
  }
  shown += ']';
  return shown;
}

}  // namespace

std::string DisplayForm(const Subpattern& subpattern) {
  if (!subpattern.RenderText.empty()) return subpattern.RenderText;
  switch (subpattern.Kind) {
    case SubpatternKind::String:
      return subpattern.Contents;
    case SubpatternKind::CharacterList:
      return BracketedList("[", subpattern.Contents);
    case SubpatternKind::NegatedCharacterList:
      return BracketedList("[!", subpattern.Contents);
    case SubpatternKind::CharacterCode:
      return subpattern.Code() == '\0' ? "{0}" : std::string(1, subpattern.Code());
    case SubpatternKind::Function:
      return "{" + subpattern.Contents + "}";
  }
  return {};
}

std::string_view CalledFunctionName(std::string_view call_text) {
  return call_text.substr(0, call_text.find('('));
}

}  // namespace zarvo
