#include "cli/listing.h"

#include <sstream>

namespace zarvo {
namespace {

bool IsControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// The escape of a control character.
std::string Escape(char32_t character) {
  constexpr const char* kHexadecimal = "0123456789ABCDEF";
  if (character == '\n') return "\\n";
  if (character == '\r') return "\\r";
  if (character == '\t') return "\\t";
  return {'\\', 'x', kHexadecimal[character >> 4], kHexadecimal[character & 0xF]};
}

class Lister {
 public:
  explicit Lister(const CodePage& code_page) : code_page_(code_page) {}

  void Header(const Filter& filter) {
    out_ << "Name:        " << Text(filter.Name) << '\n';
    out_ << "Version:     " << filter.Version
         << (filter.AutoIncrement != 0 ? " (raised at every save)" : "") << '\n';
    out_ << "Type:        " << Text(filter.Type) << '\n';
    out_ << "Author:      " << Text(filter.Author) << '\n';
    out_ << "Language:    " << Text(filter.Language) << '\n';
    out_ << "Format:      " << filter.FormatVersion << '\n';
    out_ << "Lock:        " << LockState(filter) << '\n';
    out_ << "Description: " << Text(filter.Description) << '\n';
  }

  void Rules(const RuleList& rules) {
    Heading("Rules", rules);
    for (std::size_t i = 0; i < rules.Count(); ++i) {
      const Rule& rule = rules[i];
      if (!ElementHeading(i, rule)) continue;
      out_ << "       find:    " << Quoted(rule.Pattern) << '\n';
      out_ << "       " << (rule.Inserts() ? "insert:  " : "replace: ");
      if (rule.Inserts()) {
        out_ << "after character " << rule.From;
      } else {
        out_ << "characters " << rule.From << " to " << rule.To;
      }
      out_ << (rule.Inserts() ? ", " : ", by ") << Source(rule) << '\n';
      const std::string conditions = Conditions(rule);
      if (!conditions.empty()) out_ << "       when:    " << conditions << '\n';
    }
  }

  void Sets(const SetList& sets) {
    Heading("Sets", sets);
    for (std::size_t i = 0; i < sets.Count(); ++i) {
      if (!ElementHeading(i, sets[i])) continue;
      for (const Pattern& string : sets[i].Strings) out_ << "       " << Quoted(string) << '\n';
    }
  }

  void Functions(const FunctionList& functions) {
    Heading("Functions", functions);
    for (std::size_t i = 0; i < functions.Count(); ++i) {
      const Function& function = functions[i];
      if (!ElementHeading(i, function)) continue;
      for (const FunctionEntry& entry : function.Entries) {
        out_ << "       " << Quoted(entry.Argument) << " -> " << Quoted(entry.Value) << '\n';
      }
      out_ << "       anything else -> "
           << (function.DefaultReturnsArgument == Function::kReturnArgument ? "itself" : "nothing")
           << '\n';
    }
  }

  [[nodiscard]] std::string Take() const { return out_.str(); }

 private:
  [[nodiscard]] std::string Text(std::string_view bytes) const {
    return Printable(bytes, code_page_);
  }
  [[nodiscard]] std::string Quoted(std::string_view bytes) const {
    std::string quoted = "\"";
    for (const char byte : Text(bytes)) {
      if (byte == '"') quoted += '\\';
      quoted += byte;
    }
    return quoted + '"';
  }
  [[nodiscard]] std::string Quoted(const Pattern& pattern) const {
    return Quoted(DisplayForm(pattern));
  }

  static std::string LockState(const Filter& filter) {
    if (filter.Locked == 0) return "none";
    return filter.ShowInEditorWhenLocked != 0 ? "locked, shown in the editor" : "locked";
  }

  [[nodiscard]] std::string Source(const Rule& rule) const {
    if (rule.ReplacementSource == ReplacementSource::String) return Quoted(rule.Replacement);
    if (!rule.DrawsFromSet()) {
      const auto number = static_cast<std::int32_t>(rule.ReplacementSource);
      return "nothing, as the source " + std::to_string(number) + " is unknown: the match stays";
    }
    const bool at_random = rule.ReplacementSource == ReplacementSource::SetAtRandom;
    return "the strings of the set " + Quoted(rule.ReplacementSetName) +
           (at_random ? " at random" : " in sequence");
  }

  static std::string Conditions(const Rule& rule) {
    std::string conditions;
    const auto add = [&](const std::string& condition) {
      if (!conditions.empty()) conditions += ", ";
      conditions += condition;
    };
    if (rule.Probability < Rule::kMostProbability) {
      add(std::to_string(rule.Probability) + " % of the matches");
    }
    if (rule.Once != 0) add("once");
    if (rule.Strict != 0) add("until nothing matches (strict)");
    return conditions;
  }

  template <typename Element>
  void Heading(const char* title, const RecordList<Element>& list) {
    out_ << '\n' << title << ": ";
    if (list.RecordVersion != RecordList<Element>::kNewestRecordVersion) {
      out_ << "a list of the unknown version " << list.RecordVersion << '\n';
    } else {
      out_ << list.Count() << '\n';
    }
  }

  // False when the element has no contents that could follow.
  template <typename Element>
  bool ElementHeading(std::size_t index, const Element& element) {
    out_ << "  " << index + 1 << ". ";
    const bool has_contents = element.RecordVersion == Element::kNewestRecordVersion;
    if (has_contents) {
      out_ << Text(element.Name) << '\n';
    } else {
      out_ << "(a record of the unknown version " << element.RecordVersion << ")\n";
    }
    return has_contents;
  }

  const CodePage& code_page_;
  std::ostringstream out_;
};

}  // namespace

std::string WithoutControls(std::string_view utf8) {
  std::string shown;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    // The controls from 80 to 9F are two bytes, of which the first is C2.
    const bool is_second =
        byte == 0xC2 && i + 1 < utf8.size() && IsControl(static_cast<unsigned char>(utf8[i + 1]));
    if (is_second) {
      shown += Escape(static_cast<unsigned char>(utf8[++i]));
    } else if (byte < 0x80 && IsControl(byte)) {
      shown += Escape(byte);
    } else {
      shown += utf8[i];
    }
  }
  return shown;
}

std::string Printable(std::string_view bytes, const CodePage& code_page) {
  std::string shown;
  for (const char byte : bytes) {
    const char32_t character = code_page.Character(static_cast<unsigned char>(byte));
    if (character == '\\') {
      shown += "\\\\";
    } else if (IsControl(character)) {
      shown += Escape(character);
    } else {
      AppendUtf8(shown, character);
    }
  }
  return shown;
}

std::string FilterListing(const Filter& filter, const CodePage& code_page) {
  Lister lister(code_page);
  lister.Header(filter);
  lister.Rules(filter.Rules);
  lister.Sets(filter.Sets);
  lister.Functions(filter.Functions);
  return lister.Take();
}

}  // namespace zarvo
