#include "cli/filter_json.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace zarvo {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kRecordVersion = "RecordVersion";

struct KindName {
  SubpatternKind Kind;
  const char* Name;
};
constexpr std::array<KindName, 5> kKindNames = {{
    {SubpatternKind::String, "String"},
    {SubpatternKind::CharacterList, "CharacterList"},
    {SubpatternKind::NegatedCharacterList, "NegatedCharacterList"},
    {SubpatternKind::CharacterCode, "CharacterCode"},
    {SubpatternKind::Function, "Function"},
}};

[[noreturn]] void Reject(const std::string& place, const std::string& what) {
  throw JsonMistake{place, what};
}

std::string PlaceOfKey(const std::string& place, const std::string& key) {
  const std::string shown = key.empty() ? "\"\"" : key;
  return place.empty() ? shown : place + "." + shown;
}

std::string PlaceOfElement(const std::string& place, std::size_t index) {
  return place + "[" + std::to_string(index) + "]";
}

std::string Hexadecimal(char32_t character) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string digits;
  for (int shift = 20; shift >= 0; shift -= 4) {
    const auto digit = static_cast<std::size_t>(character >> shift & 0xFU);
    if (digit != 0 || !digits.empty() || shift < 16) digits += kDigits[digit];
  }
  return digits;
}

// One JSON object that is being made from a record's fields, or from which they are read. The same
// sequence of calls does both, so that no field is known to one direction only.
class JsonObject {
 public:
  JsonObject(Json& node, bool reading, const CodePage& code_page, std::string place)
      : node_(node), reading_(reading), code_page_(code_page), place_(std::move(place)) {
    if (!reading_) {
      node_ = Json::object();
    } else if (!node_.is_object()) {
      Reject(place_, std::string("an object is expected, not ") + node_.type_name());
    }
  }

  // To be called after the last field: finds the keys that no field has asked for.
  void End() const {
    if (!reading_) return;
    for (const auto& [key, value] : node_.items()) {
      if (!known_.contains(key)) Reject(Place(key), "there is no such key here");
    }
  }

  template <typename Integer>
  requires std::is_integral_v<Integer>
  void Number(const char* key, Integer& value) {
    Json* const node = Child(key);
    if (node == nullptr) return;
    if (!reading_) {
      *node = value;
      return;
    }
    if (!node->is_number_integer()) Reject(Place(key), "a whole number is expected");
    using Limits = std::numeric_limits<Integer>;
    const bool fits = node->is_number_unsigned()
                          ? node->get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max())
                          : node->get<std::int64_t>() >= Limits::min();
    if (!fits) {
      Reject(Place(key), "a number from " + std::to_string(Limits::min()) + " to " +
                             std::to_string(Limits::max()) + " is expected");
    }
    value = node->get<Integer>();
  }

  template <typename Enum>
  requires std::is_enum_v<Enum>
  void Number(const char* key, Enum& value) {
    auto number = static_cast<std::underlying_type_t<Enum>>(value);
    Number(key, number);
    value = static_cast<Enum>(number);
  }

  void Kind(const char* key, SubpatternKind& kind) {
    if (!reading_) {
      const auto* const known =
          std::find_if(kKindNames.begin(), kKindNames.end(),
                       [&](const KindName& name) { return name.Kind == kind; });
      if (known != kKindNames.end()) {
        *Child(key) = known->Name;
        return;
      }
    } else if (node_.contains(key) && node_[key].is_string()) {
      const auto& text = Child(key)->get_ref<const std::string&>();
      const auto* const known =
          std::find_if(kKindNames.begin(), kKindNames.end(),
                       [&](const KindName& name) { return text == name.Name; });
      if (known == kKindNames.end()) Reject(Place(key), "there is no kind \"" + text + "\"");
      kind = known->Kind;
      return;
    }
    Number(key, kind);
  }

  void Text(const char* key, std::string& text) {
    Json* const node = Child(key);
    if (node == nullptr) return;
    if (!reading_) {
      *node = code_page_.ToUtf8(text);
      return;
    }
    if (!node->is_string()) Reject(Place(key), "a text is expected");
    CodePage::Encoded encoded = code_page_.FromUtf8(node->get_ref<const std::string&>());
    if (encoded.Lacking) {
      std::string character;
      AppendUtf8(character, *encoded.Lacking);
      Reject(Place(key), "the code page lacks the character \"" + character + "\" (U+" +
                             Hexadecimal(*encoded.Lacking) + ")");
    }
    text = std::move(encoded.Bytes);
  }

  template <typename Item>
  void Record(const char* key, Item& record) {
    if (Json* const node = Child(key)) {
      JsonObject object(*node, reading_, code_page_, Place(key));
      Describe(object, record);
      object.End();
    }
  }

  template <typename Item>
  void Elements(const char* key, std::vector<Item>& elements) {
    Json* const node = Child(key);
    if (node == nullptr) return;
    if (reading_) {
      if (!node->is_array()) Reject(Place(key), "an array is expected");
      elements.assign(node->size(), Item());
    } else {
      *node = Json::array();
    }
    for (std::size_t i = 0; i < elements.size(); ++i) {
      Json& child = reading_ ? (*node)[i] : node->emplace_back();
      JsonObject object(child, reading_, code_page_, PlaceOfElement(Place(key), i));
      Describe(object, elements[i]);
      object.End();
    }
  }

  // An array, or an object with the version where a list's own version isn't 1.
  template <typename Item>
  void List(const char* key, RecordList<Item>& list) {
    const bool has_version = reading_
                                 ? node_.contains(key) && node_[key].is_object()
                                 : list.RecordVersion != RecordList<Item>::kNewestRecordVersion;
    if (!has_version) {
      Elements(key, list.Elements);
      return;
    }
    JsonObject object(*Child(key), reading_, code_page_, Place(key));
    object.Number(kRecordVersion, list.RecordVersion);
    object.End();
  }

 private:
  [[nodiscard]] std::string Place(const std::string& key) const { return PlaceOfKey(place_, key); }

  // The value of the key; null when it is to be read and isn't there.
  Json* Child(const char* key) {
    if (!reading_) return &node_[key];
    known_.insert(key);
    const auto found = node_.find(key);
    return found == node_.end() ? nullptr : &*found;
  }

  // True when the record has contents.
  template <typename Item>
  static bool Begin(JsonObject& object, Item& record) {
    object.Number(kRecordVersion, record.RecordVersion);
    return record.RecordVersion == Item::kNewestRecordVersion;
  }

  static void Describe(JsonObject& object, Subpattern& subpattern) {
    if (!Begin(object, subpattern)) return;
    object.Kind("Kind", subpattern.Kind);
    object.Text("Contents", subpattern.Contents);
    object.Text("RenderText", subpattern.RenderText);
  }

  static void Describe(JsonObject& object, Pattern& pattern) {
    if (!Begin(object, pattern)) return;
    object.Number("MostSignificant", pattern.MostSignificant);
    object.Elements("Subpatterns", pattern.Subpatterns);
  }

  static void Describe(JsonObject& object, Rule& rule) {
    if (!Begin(object, rule)) return;
    object.Text("Name", rule.Name);
    object.Number("Probability", rule.Probability);
    object.Record("Pattern", rule.Pattern);
    object.Number("ReplacementSource", rule.ReplacementSource);
    object.Number("From", rule.From);
    object.Number("To", rule.To);
    object.Text("ReplacementSetName", rule.ReplacementSetName);
    object.Record("Replacement", rule.Replacement);
    object.Number("Strict", rule.Strict);
    object.Number("Once", rule.Once);
  }

  static void Describe(JsonObject& object, Set& set) {
    if (!Begin(object, set)) return;
    object.Text("Name", set.Name);
    object.Elements("Strings", set.Strings);
  }

  static void Describe(JsonObject& object, FunctionEntry& entry) {
    object.Text("Argument", entry.Argument);
    object.Text("Value", entry.Value);
  }

  static void Describe(JsonObject& object, Function& function) {
    if (!Begin(object, function)) return;
    object.Text("Name", function.Name);
    object.Number("DefaultReturnsArgument", function.DefaultReturnsArgument);
    object.Elements("Entries", function.Entries);
  }

  Json& node_;
  bool reading_;
  const CodePage& code_page_;
  std::string place_;
  std::set<std::string> known_;
};

void DescribeFilter(Json& json, bool reading, const CodePage& code_page, Filter& filter) {
  JsonObject object(json, reading, code_page, "");
  object.Number("FormatVersion", filter.FormatVersion);
  object.Number("Locked", filter.Locked);
  object.Number("ShowInEditorWhenLocked", filter.ShowInEditorWhenLocked);
  object.Text("Password", filter.Password);
  object.Text("PasswordKey", filter.PasswordKey);
  object.Number("AutoIncrement", filter.AutoIncrement);
  object.Text("Name", filter.Name);
  object.Number("Version", filter.Version);
  object.Text("Author", filter.Author);
  object.Text("Language", filter.Language);
  object.Text("Description", filter.Description);
  object.Text("Type", filter.Type);
  object.List("Rules", filter.Rules);
  object.List("Functions", filter.Functions);
  object.List("Sets", filter.Sets);
  object.End();
}

// Reads through JSON before anything is built of it, and rejects what no filter has: a key that
// stands twice in one object, of which the reader would silently drop the first value; an object of
// more keys than any record has, which the reader takes quadratic time for; an array of anything
// but objects; deep nesting. What is left takes memory in proportion to a filter.
class Inspection : public Json::json_sax_t {
 public:
  bool null() override { return TakeScalar(); }
  bool boolean(bool /*value*/) override { return TakeScalar(); }
  bool number_integer(number_integer_t /*value*/) override { return TakeScalar(); }
  bool number_unsigned(number_unsigned_t /*value*/) override { return TakeScalar(); }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
    return TakeScalar();
  }
  bool string(string_t& /*value*/) override { return TakeScalar(); }
  bool binary(binary_t& /*value*/) override { return TakeScalar(); }

  bool start_object(std::size_t /*count*/) override { return Begin(false); }
  bool start_array(std::size_t /*count*/) override {
    if (InArray()) Reject(PlaceOfNext(), "an object is expected, not array");
    return Begin(true);
  }
  bool end_object() override { return End(); }
  bool end_array() override { return End(); }

  bool key(string_t& key) override {
    Level& level = levels_.back();
    level.Key = key;
    if (!level.Keys.insert(key).second) Reject(Place(), "this key stands twice in one object");
    if (level.Keys.size() > kMostKeys) Reject(Place(), "too many keys stand in one object");
    return true;
  }

  bool parse_error(std::size_t /*position*/, const std::string& /*last_token*/,
                   const nlohmann::detail::exception& error) override {
    throw JsonMistake{"", Explain(error)};
  }

 private:
  static constexpr std::size_t kMostKeys = 64;
  static constexpr std::size_t kMostLevels = 32;

  struct Level {
    bool IsArray = false;
    std::size_t Count = 0;  // of an array's elements so far
    std::string Key;        // the last one of an object
    std::set<std::string> Keys;
  };

  // The library's message without its own number in brackets.
  static std::string Explain(const std::exception& error) {
    const std::string text = error.what();
    const std::size_t bracket = text.find("] ");
    return bracket == std::string::npos ? text : text.substr(bracket + 2);
  }

  [[nodiscard]] bool InArray() const { return !levels_.empty() && levels_.back().IsArray; }

  bool TakeScalar() {
    if (InArray()) Reject(PlaceOfNext(), "an object is expected");
    return true;
  }

  bool Begin(bool is_array) {
    if (InArray()) ++levels_.back().Count;
    if (levels_.size() == kMostLevels) Reject(Place(), "this is nested too deeply");
    levels_.emplace_back();
    levels_.back().IsArray = is_array;
    return true;
  }

  bool End() {
    levels_.pop_back();
    return true;
  }

  // Of the value that was read last.
  [[nodiscard]] std::string Place() const {
    std::string place;
    for (const Level& level : levels_) {
      if (level.IsArray && level.Count == 0) break;
      place = level.IsArray ? PlaceOfElement(place, level.Count - 1) : PlaceOfKey(place, level.Key);
    }
    return place;
  }

  // Of the array's element that begins now.
  [[nodiscard]] std::string PlaceOfNext() {
    ++levels_.back().Count;
    return Place();
  }

  std::vector<Level> levels_;
};

}  // namespace

std::string FilterToJson(Filter filter, const CodePage& code_page) {
  Json json;
  DescribeFilter(json, false, code_page, filter);
  constexpr int kIndent = 2;
  return json.dump(kIndent) + "\n";
}

std::optional<JsonMistake> FilterFromJson(std::string_view json, const CodePage& code_page,
                                          Filter& filter) {
  try {
    // The reader would take it for the end.
    const std::size_t zero = json.find('\0');
    if (zero != std::string_view::npos) {
      Reject("", "a zero byte stands at byte " + std::to_string(zero));
    }
    Inspection inspection;
    Json::sax_parse(json, &inspection);
    Json parsed = Json::parse(json);
    Filter result;
    DescribeFilter(parsed, true, code_page, result);
    filter = std::move(result);
    return {};
  } catch (const JsonMistake& mistake) {
    return mistake;
  }
}

}  // namespace zarvo
