// The work on one Pattern in the String Editor, without its window: which subpattern is current,
// and what each command does to the Pattern. Whether a command is allowed is the window's business.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/services/subpattern_library.h"
#include "model/pattern.h"

namespace zarvo {

/// Positions are 0-based. While the Pattern is empty nothing but IsEmpty, Count, Edited and Append
/// may be called.
class PatternDraft {
 public:
  explicit PatternDraft(Pattern pattern) : pattern_(std::move(pattern)) {}

  [[nodiscard]] const Pattern& Edited() const { return pattern_; }
  [[nodiscard]] std::size_t Count() const { return pattern_.Subpatterns.size(); }
  [[nodiscard]] bool IsEmpty() const { return pattern_.Subpatterns.empty(); }

  [[nodiscard]] std::size_t Position() const { return position_; }
  /// A position outside the Pattern is ignored.
  void Select(std::size_t position);
  [[nodiscard]] const Subpattern& Current() const { return pattern_.Subpatterns[position_]; }

  /// What the tab of the subpattern at this position says: its display form, or the first 10 bytes
  /// of it and "..." where it has 14 bytes or more.
  [[nodiscard]] std::string Caption(std::size_t position) const;

  // ---- The current subpattern

  /// The contents as people edit them: of a Character code its decimal number, otherwise the
  /// contents as they are.
  [[nodiscard]] std::string Text() const;
  /// The way back. Of a Character code it is the number that the text begins with, see CodeOf.
  void SetText(std::string_view text);
  void SetRenderText(std::string_view render_text) { ToChange().RenderText = render_text; }

  /// The contents turn with the kind: a Character code into its decimal digits and back by CodeOf.
  void SetKind(SubpatternKind kind);
  /// A plain Character list becomes negated; anything else becomes a plain one.
  void ToggleNegated();

  /// Takes kind, contents and render text over.
  void Replace(const Subpattern& subpattern);
  /// Contents and render text come from a library entry. The kind stays, except that an entry of
  /// the lists says whether its list is negated.
  void Take(const PredefinedSubpattern& entry);
  /// Contents become a call of this function, with nothing between the brackets yet.
  void Call(std::string_view function_name);

  /// The section of the library that holds subpatterns of this kind; that of the lists for the
  /// kinds that have none.
  [[nodiscard]] LibrarySection Section() const;
  /// The current subpattern as a new entry for its Section.
  [[nodiscard]] PredefinedSubpattern AsEntry(std::string name, bool show) const;

  // ---- The list

  /// Puts an empty String at the end and selects it.
  void Append();
  [[nodiscard]] bool CanDelete() const { return Count() >= 2; }
  /// Only where CanDelete. The subpattern before the deleted one, or else the first, is selected.
  /// The most significant one is chosen anew where its number is the one behind the selected; in
  /// every other case the number stays, also where it now stands for another subpattern or none.
  void Delete();
  [[nodiscard]] bool CanMoveLeft() const { return position_ > 0; }
  [[nodiscard]] bool CanMoveRight() const { return position_ + 1 < Count(); }
  /// Only where CanMoveLeft or CanMoveRight. The selection goes along, MostSignificant doesn't.
  void MoveLeft() { MoveTo(position_ - 1); }
  void MoveRight() { MoveTo(position_ + 1); }

  // ---- The most significant subpattern

  [[nodiscard]] bool HasMostSignificant() const {
    return pattern_.MostSignificant != Pattern::kNotChosen;
  }
  [[nodiscard]] bool IsMostSignificant() const { return pattern_.MostSignificant == Number(); }
  /// False leaves none chosen, also where another one was.
  void SetMostSignificant(bool is_most_significant) {
    pattern_.MostSignificant = is_most_significant ? Number() : Pattern::kNotChosen;
  }
  void FindMostSignificant() { pattern_.MostSignificant = pattern_.ComputeMostSignificant(); }

 private:
  [[nodiscard]] Subpattern& ToChange() { return pattern_.Subpatterns[position_]; }
  [[nodiscard]] std::int32_t Number() const { return static_cast<std::int32_t>(position_); }
  void MoveTo(std::size_t position);

  Pattern pattern_;
  std::size_t position_ = 0;
};

/// The contents of a Character code that was typed as a decimal number: the one byte with that
/// number, of which the lowest eight bits count; empty for the code 0, which no text can hold.
[[nodiscard]] std::string CodeOf(std::string_view number);

}  // namespace zarvo
