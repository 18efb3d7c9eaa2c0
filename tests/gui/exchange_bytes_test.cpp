// The bytes of exchange files of Sets and Functions, compared with files laid down by hand.

#include <array>
#include <string_view>
#include <type_traits>

#include "tests/gui/list_editor_fixture.h"
#include "tests/support/golden.h"
#include "tests/support/golden_filters.h"

namespace zarvo {
namespace {

using testing::Call;
using testing::FunctionOf;
using testing::Golden;
using testing::Of;
using testing::SetOf;
using testing::Str;

template <typename Object>
struct Exchanged;

template <>
struct Exchanged<Set> {
  static constexpr testing::EditorNames kEditor = testing::kSetsEditor;
  static constexpr const char* kList = "stringList";
  // The two differ in one letter.
  static constexpr const char* kImportFilters =
      "Binary Zarvo set (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|";
  static constexpr const char* kExportFilters =
      "Binary Zarvo sets (*.ZarvoSet)|*.ZarvoSet|All files (*.*)|*.*|";
  static constexpr const char* kExtension = "ZarvoSet";
  static constexpr const char* kGolden = "set";
  static constexpr std::array<const char*, 2> kOthersGolden = {"function", "rule"};
  static constexpr bool kUpdatesPreview = true;

  static Set Named(std::string name) { return SetOf(std::move(name), {}); }
  /// What the golden file holds.
  static Set Stored() { return SetOf("ends", {Of({Str(".")}, 0), Of({Call("f(1,1)")})}); }
  static std::vector<std::string> StoredLines() { return {".", "{f(1,1)}"}; }
  static std::vector<Set>& ListOf(Filter& filter) { return filter.Sets.Elements; }
};

template <>
struct Exchanged<Function> {
  static constexpr testing::EditorNames kEditor = testing::kFunctionsEditor;
  static constexpr const char* kList = "pairList";
  static constexpr const char* kImportFilters =
      "Binary Zarvo functions (*.ZarvoFunction)|*.ZarvoFunction|All files (*.*)|*.*|";
  static constexpr const char* kExportFilters = kImportFilters;
  static constexpr const char* kExtension = "ZarvoFunction";
  static constexpr const char* kGolden = "function";
  // A Rule's file happens to read as a Function, whose record it begins like.
  static constexpr std::array<const char*, 1> kOthersGolden = {"set"};
  static constexpr bool kUpdatesPreview = false;

  static Function Named(std::string name) { return FunctionOf(std::move(name), {}); }
  static Function Stored() { return FunctionOf("upper", {{"a", "A"}, {"\xDF", "SS"}}, 1); }
  static std::vector<std::string> StoredLines() { return {"a \u2014> A", "\u00DF \u2014> SS"}; }
  static std::vector<Function>& ListOf(Filter& filter) { return filter.Functions.Elements; }
};

template <typename Object>
class ExchangeBytes : public testing::ListEditorFixture {
 protected:
  using Exchange = Exchanged<Object>;

  ExchangeBytes() : ListEditorFixture(Exchange::kEditor, Exchange::kList) {}

  static Filter With(std::vector<Object> objects) {
    Filter filter;
    Exchange::ListOf(filter) = std::move(objects);
    return filter;
  }
  std::vector<Object>& Objects() { return Exchange::ListOf(TheFilter()); }

  void Export(const QString& proposed_name, std::optional<QString> path) {
    dialogs_.ExpectSave(Exchange::kExportFilters, Exchange::kExtension, proposed_name,
                        std::move(path));
    ClickIn("exportButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
  void Import(std::optional<QString> path) {
    dialogs_.ExpectOpen(Exchange::kImportFilters, Exchange::kExtension, std::move(path));
    ClickIn("importButton");
    EXPECT_TRUE(dialogs_.IsDone());
  }
  void ImportBytes(std::string_view bytes) {
    folder_.Write("imported", bytes);
    Import(PathOf("imported"));
  }
  /// The import must fail with its message and leave everything as it is.
  void ExpectRefused(std::string_view bytes, const std::string& what) {
    const Filter before = TheFilter();
    folder_.Write("damaged", bytes);
    dialogs_.ExpectOpen(Exchange::kImportFilters, Exchange::kExtension, PathOf("damaged"));
    ExpectExclamation("Error loading file " + folder_.File("damaged"));
    ClickIn("importButton");
    EXPECT_TRUE(dialogs_.IsDone()) << what;
    EXPECT_EQ(TheFilter(), before) << what;
    EXPECT_EQ(Captions().size(), Objects().size()) << what;
    EXPECT_EQ(Selected(), 0) << what;
    EXPECT_FALSE(WasModified()) << what;
  }
};

using Kinds = ::testing::Types<Set, Function>;
class KindNames {
 public:
  template <typename Object>
  static std::string GetName(int /*position*/) {
    return std::is_same_v<Object, Set> ? "Set" : "Function";
  }
};
TYPED_TEST_SUITE(ExchangeBytes, Kinds, KindNames);

// ---- Export

TYPED_TEST(ExchangeBytes, ExportWritesTheRecordOfTheSelectedObject) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("first"), Kind::Stored()}));
  this->ClickTab(1);
  const Filter before = this->TheFilter();
  const std::string name = Kind::Stored().Name;
  this->Export(QString::fromStdString(name), this->PathOf("exported"));
  EXPECT_EQ(this->folder_.Read("exported"), Golden(Kind::kGolden));
  EXPECT_EQ(this->TheFilter(), before);
  EXPECT_EQ(this->Selected(), 1);
  EXPECT_FALSE(this->WasModified());
}

TYPED_TEST(ExchangeBytes, ARecordOfAnotherVersionIsExportedAsItsNumber) {
  this->Show(this->With({testing::OfVersion<TypeParam>(2)}));
  this->Export(QString(), this->PathOf("exported"));
  EXPECT_EQ(this->folder_.Read("exported"), Golden("record-other-version"));
}

// ---- Import

TYPED_TEST(ExchangeBytes, ImportAppendsSelectsAndShowsTheObject) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a"), Kind::Named("b")}));
  this->AutoUpdate();
  this->ImportBytes(Golden(Kind::kGolden));
  EXPECT_EQ(this->Objects(),
            (std::vector<TypeParam>{Kind::Named("a"), Kind::Named("b"), Kind::Stored()}));
  EXPECT_EQ(this->Captions(), (std::vector<std::string>{"a", "b", Kind::Stored().Name}));
  EXPECT_EQ(this->Selected(), 2);
  EXPECT_EQ(this->ShownIn("nameEdit"), Kind::Stored().Name);
  EXPECT_EQ(this->Lines(), Kind::StoredLines());
  EXPECT_EQ(this->Count(), "3");
  EXPECT_TRUE(this->WasModified());
  EXPECT_EQ(this->WasPreviewUpdated(), Kind::kUpdatesPreview);
}

TYPED_TEST(ExchangeBytes, ExportedObjectsComeBackWithAllTheirBytes) {
  using Kind = Exchanged<TypeParam>;
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  this->Show(this->With({Kind::Named(bytes)}));
  QString proposed = FromBytes(bytes);
  this->Export(proposed.replace(QLatin1Char('/'), QLatin1Char('_')), this->PathOf("exported"));
  this->Import(this->PathOf("exported"));
  EXPECT_EQ(this->Objects(), (std::vector<TypeParam>{Kind::Named(bytes), Kind::Named(bytes)}));
}

TYPED_TEST(ExchangeBytes, FilesOfOtherKindsAreRefused) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  for (const char* other : Kind::kOthersGolden) this->ExpectRefused(Golden(other), other);
}

TYPED_TEST(ExchangeBytes, AForeignFileCountsAsARecordOfAnotherVersion) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->ImportBytes("text\r\n");
  this->ImportBytes(Golden("format-v6"));
  ASSERT_EQ(this->Objects().size(), 3U);
  EXPECT_EQ(this->Objects()[1], testing::OfVersion<TypeParam>(0x74786574));
  EXPECT_EQ(this->Objects()[2], testing::OfVersion<TypeParam>(0x52415A0C));
}

TYPED_TEST(ExchangeBytes, ARecordOfAnotherVersionIsAppendedWithTheDefaults) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->ImportBytes(Golden("record-other-version"));
  EXPECT_EQ(this->Objects(),
            (std::vector<TypeParam>{Kind::Named("a"), testing::OfVersion<TypeParam>(2)}));
  EXPECT_EQ(this->Captions(), (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(this->Selected(), 1);
  EXPECT_EQ(this->ShownIn("nameEdit"), "");
  EXPECT_EQ(this->Lines(), std::vector<std::string>());
  EXPECT_TRUE(this->WasModified());
}

// ---- What only Sets have

using SetBytes = ExchangeBytes<Set>;

TEST_F(SetBytes, AnEmptySetIsItsVersionItsNameAndZero) {
  using namespace std::string_literals;
  Show(With({SetOf("empty", {})}));
  Export(QStringLiteral("empty"), PathOf("exported"));
  EXPECT_EQ(folder_.Read("exported"), "\x01\0\0\0\x05"s + "empty" + "\0\0\0\0"s);
  EXPECT_EQ(folder_.Read("exported"), Golden("set-empty"));
}

TEST_F(SetBytes, ExportChoosesMostSignificantSubpatternsInTheFileAlone) {
  Show(With({SetOf("ends", {Of({Str(".")}), Of({Call("f(1,1)")})})}));
  // Writing the document's own file has chosen it already.
  TheFilter().Sets[0].Strings[0].MostSignificant = Pattern::kNotChosen;
  Export(QStringLiteral("ends"), PathOf("exported"));
  EXPECT_EQ(folder_.Read("exported"), Golden("set"));
  EXPECT_EQ(TheFilter().Sets[0].Strings[0].MostSignificant, Pattern::kNotChosen);
}

}  // namespace
}  // namespace zarvo
