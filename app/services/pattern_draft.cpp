#include "app/services/pattern_draft.h"

#include <utility>

#include "app/services/leading_integer.h"

namespace zarvo {
namespace {

constexpr std::size_t kShortCaption = 14;  // bytes; a shorter one stands whole on its tab
constexpr std::size_t kCutCaption = 10;

std::string CodeAsNumber(const Subpattern& subpattern) {
  return std::to_string(static_cast<unsigned char>(subpattern.Code()));
}

// The library holds the code 0 as a character, which contents can't.
std::string UpToZero(const std::string& bytes) { return bytes.substr(0, bytes.find('\0')); }

}  // namespace

std::string CodeOf(std::string_view number) {
  const auto code = static_cast<unsigned char>(LeadingInteger(number));
  return code == 0 ? std::string() : std::string(1, static_cast<char>(code));
}

void PatternDraft::Select(std::size_t position) {
  if (position < Count()) position_ = position;
}

std::string PatternDraft::Caption(std::size_t position) const {
  std::string caption = DisplayForm(pattern_.Subpatterns[position]);
  if (caption.size() >= kShortCaption) caption.replace(kCutCaption, std::string::npos, "...");
  return caption;
}

std::string PatternDraft::Text() const {
  return Current().Kind == SubpatternKind::CharacterCode ? CodeAsNumber(Current())
                                                         : Current().Contents;
}

void PatternDraft::SetText(std::string_view text) {
  Subpattern& current = ToChange();
  current.Contents =
      current.Kind == SubpatternKind::CharacterCode ? CodeOf(text) : std::string(text);
}

void PatternDraft::SetKind(SubpatternKind kind) {
  // Contents that only a file can hold, such as a Character code of two bytes, stay.
  if (kind == Current().Kind) return;
  const std::string text = Text();
  ToChange().Kind = kind;
  SetText(text);
}

void PatternDraft::ToggleNegated() {
  Subpattern& current = ToChange();
  current.Kind = current.Kind == SubpatternKind::CharacterList
                     ? SubpatternKind::NegatedCharacterList
                     : SubpatternKind::CharacterList;
}

void PatternDraft::Replace(const Subpattern& subpattern) {
  Subpattern& current = ToChange();
  current.Kind = subpattern.Kind;
  current.Contents = UpToZero(subpattern.Contents);
  current.RenderText = subpattern.RenderText;
}

void PatternDraft::Take(const PredefinedSubpattern& entry) {
  Subpattern taken = Current();
  if (Section() == LibrarySection::CharacterLists) {
    taken.Kind = entry.Mode == PredefinedSubpattern::kNegatedList
                     ? SubpatternKind::NegatedCharacterList
                     : SubpatternKind::CharacterList;
  }
  taken.Contents = entry.Value;
  taken.RenderText = entry.RenderText;
  Replace(taken);
}

void PatternDraft::Call(std::string_view function_name) {
  ToChange().Contents = std::string(function_name) + "()";
}

LibrarySection PatternDraft::Section() const {
  switch (Current().Kind) {
    case SubpatternKind::String:
      return LibrarySection::Strings;
    case SubpatternKind::CharacterCode:
      return LibrarySection::CharacterCodes;
    default:
      return LibrarySection::CharacterLists;
  }
}

PredefinedSubpattern PatternDraft::AsEntry(std::string name, bool show) const {
  PredefinedSubpattern entry;
  entry.Name = std::move(name);
  entry.Value = Current().Contents;
  entry.RenderText = Current().RenderText;
  entry.Mode = Current().Kind == SubpatternKind::NegatedCharacterList
                   ? PredefinedSubpattern::kNegatedList
                   : PredefinedSubpattern::kPlainList;
  entry.Show = show ? 1 : 0;
  return entry;
}

void PatternDraft::Append() {
  pattern_.Subpatterns.emplace_back();
  position_ = Count() - 1;
}

void PatternDraft::Delete() {
  pattern_.Subpatterns.erase(pattern_.Subpatterns.begin() + static_cast<std::ptrdiff_t>(position_));
  if (position_ > 0) --position_;
  if (pattern_.MostSignificant == Number() + 1) FindMostSignificant();
}

void PatternDraft::MoveTo(std::size_t position) {
  std::swap(pattern_.Subpatterns[position_], pattern_.Subpatterns[position]);
  position_ = position;
}

}  // namespace zarvo
