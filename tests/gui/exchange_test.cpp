// Files of one Set or one Function, as their editors export and import them.

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
  static constexpr std::array<const char*, 2> kOthersGolden = {"set", "rule"};
  static constexpr bool kUpdatesPreview = false;

  static Function Named(std::string name) { return FunctionOf(std::move(name), {}); }
  static Function Stored() { return FunctionOf("upper", {{"a", "A"}, {"\xDF", "SS"}}, 1); }
  static std::vector<std::string> StoredLines() { return {"a \u2014> A", "\u00DF \u2014> SS"}; }
  static std::vector<Function>& ListOf(Filter& filter) { return filter.Functions.Elements; }
};

template <typename Object>
class ExchangeTest : public testing::ListEditorFixture {
 protected:
  using Exchange = Exchanged<Object>;

  ExchangeTest() : ListEditorFixture(Exchange::kEditor, Exchange::kList) {}

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
TYPED_TEST_SUITE(ExchangeTest, Kinds, KindNames);

// ---- Export

TYPED_TEST(ExchangeTest, ExportWritesTheRecordOfTheSelectedObject) {
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

TYPED_TEST(ExchangeTest, ExportReplacesALongerFile) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Stored()}));
  this->folder_.Write("exported", std::string(10000, 'x'));
  this->Export(QString::fromStdString(Kind::Stored().Name), this->PathOf("exported"));
  EXPECT_EQ(this->folder_.Read("exported"), Golden(Kind::kGolden));
}

TYPED_TEST(ExchangeTest, CancelledExportWritesNothing) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("n")}));
  const std::size_t files = this->folder_.Count();
  this->Export(QStringLiteral("n"), std::nullopt);
  EXPECT_EQ(this->folder_.Count(), files);
}

TYPED_TEST(ExchangeTest, ExportProposesTheNameWithoutSeparators) {
  using Kind = Exchanged<TypeParam>;
  const std::pair<const char*, QString> names[] = {
      {"", QString()},
      {"a b", QStringLiteral("a b")},
      {"a/b/", QStringLiteral("a_b_")},
      {"& <i> \"q\"", QStringLiteral("& <i> \"q\"")},
      {"\x9C\xE6.txt", QStringLiteral("\u0153\u00E6.txt")}};
  for (const auto& [name, proposed] : names) {
    this->Show(this->With({Kind::Named(name)}));
    this->Export(proposed, std::nullopt);
  }
}

TYPED_TEST(ExchangeTest, ExportThatFailsSaysSo) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("n")}));
  const Filter before = this->TheFilter();
  const std::string path = this->folder_.File("no folder") + "/f";
  this->dialogs_.ExpectSave(Kind::kExportFilters, Kind::kExtension, QStringLiteral("n"),
                            QString::fromStdString(path));
  this->ExpectExclamation("Error saving file " + path);
  this->ClickIn("exportButton");
  EXPECT_TRUE(this->dialogs_.IsDone());
  EXPECT_EQ(this->TheFilter(), before);
  EXPECT_FALSE(this->WasModified());
}

TYPED_TEST(ExchangeTest, ALockedFilterIsExported) {
  using Kind = Exchanged<TypeParam>;
  this->ShowLocked(this->With({Kind::Stored()}));
  this->Export(QString::fromStdString(Kind::Stored().Name), this->PathOf("exported"));
  EXPECT_EQ(this->folder_.Read("exported"), Golden(Kind::kGolden));
}

TYPED_TEST(ExchangeTest, ARecordOfAnotherVersionIsExportedAsItsNumber) {
  this->Show(this->With({testing::OfVersion<TypeParam>(2)}));
  this->Export(QString(), this->PathOf("exported"));
  EXPECT_EQ(this->folder_.Read("exported"), Golden("record-other-version"));
}

// ---- Import

TYPED_TEST(ExchangeTest, ImportAppendsSelectsAndShowsTheObject) {
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

TYPED_TEST(ExchangeTest, ImportDoesNotLookAtNames) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named(Kind::Stored().Name), Kind::Named("b")}));
  this->ImportBytes(Golden(Kind::kGolden));
  const std::string name = Kind::Stored().Name;
  EXPECT_EQ(this->Captions(), (std::vector<std::string>{name, "b", name}));
  EXPECT_EQ(this->Selected(), 2);
  EXPECT_EQ(this->Objects()[0], Kind::Named(name));
  EXPECT_EQ(this->Objects()[2], Kind::Stored());
}

TYPED_TEST(ExchangeTest, ImportIntoAnEmptyListMakesItTheOnlyObject) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->window_->NewDocument();
  ASSERT_FALSE(this->IsEnabled("nameEdit"));
  this->ImportBytes(Golden(Kind::kGolden));
  EXPECT_EQ(this->Objects(), std::vector<TypeParam>{Kind::Stored()});
  EXPECT_EQ(this->Selected(), 0);
  EXPECT_EQ(this->Lines(), Kind::StoredLines());
  EXPECT_TRUE(this->IsEnabled("nameEdit"));
  EXPECT_TRUE(this->IsEnabled("exportButton"));
  EXPECT_FALSE(this->IsEnabled("deleteButton"));
}

TYPED_TEST(ExchangeTest, TheTabShowsTwentyBytesOfALongName) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  for (const std::size_t length : {23U, 24U, 300U}) {
    TypeParam object = Kind::Named(std::string(length, 'n'));
    this->ImportBytes(testing::SaveRecord(object));
    EXPECT_EQ(this->Captions().back(),
              length < 24 ? std::string(length, 'n') : std::string(20, 'n') + "...");
    EXPECT_EQ(this->Objects().back(), object);
  }
}

TYPED_TEST(ExchangeTest, ExportedObjectsComeBackWithAllTheirBytes) {
  using Kind = Exchanged<TypeParam>;
  std::string bytes;
  for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
  this->Show(this->With({Kind::Named(bytes)}));
  QString proposed = FromBytes(bytes);
  this->Export(proposed.replace(QLatin1Char('/'), QLatin1Char('_')), this->PathOf("exported"));
  this->Import(this->PathOf("exported"));
  EXPECT_EQ(this->Objects(), (std::vector<TypeParam>{Kind::Named(bytes), Kind::Named(bytes)}));
}

TYPED_TEST(ExchangeTest, CancelledImportChangesNothing) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->Import(std::nullopt);
  EXPECT_EQ(this->Objects(), std::vector<TypeParam>{Kind::Named("a")});
  EXPECT_FALSE(this->WasModified());
}

TYPED_TEST(ExchangeTest, AFileThatCannotBeOpenedIsPassedOverInSilence) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->Import(this->PathOf("not there"));
  EXPECT_EQ(this->Objects(), std::vector<TypeParam>{Kind::Named("a")});
  EXPECT_EQ(this->Captions(), std::vector<std::string>{"a"});
  EXPECT_FALSE(this->WasModified());
}

TYPED_TEST(ExchangeTest, EveryTruncatedRecordIsRefused) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a"), Kind::Stored()}));
  const std::string whole = Golden(Kind::kGolden);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    this->ExpectRefused(whole.substr(0, length), std::to_string(length) + " bytes");
  }
}

TYPED_TEST(ExchangeTest, FilesOfOtherKindsAreRefused) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  for (const char* other : Kind::kOthersGolden) this->ExpectRefused(Golden(other), other);
}

TYPED_TEST(ExchangeTest, AForeignFileCountsAsARecordOfAnotherVersion) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->ImportBytes("text\r\n");
  this->ImportBytes(Golden("format-v6"));
  ASSERT_EQ(this->Objects().size(), 3U);
  EXPECT_EQ(this->Objects()[1], testing::OfVersion<TypeParam>(0x74786574));
  EXPECT_EQ(this->Objects()[2], testing::OfVersion<TypeParam>(0x52415A0C));
}

TYPED_TEST(ExchangeTest, ARecordOfAnotherVersionIsAppendedWithTheDefaults) {
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

TYPED_TEST(ExchangeTest, BytesBehindTheRecordAreIgnored) {
  using Kind = Exchanged<TypeParam>;
  this->Show(this->With({Kind::Named("a")}));
  this->ImportBytes(Golden(Kind::kGolden) + Golden(Kind::kGolden) + "more");
  EXPECT_EQ(this->Objects(), (std::vector<TypeParam>{Kind::Named("a"), Kind::Stored()}));
}

TYPED_TEST(ExchangeTest, ALockedEditorWarnsOnceAndOpensNoDialog) {
  using Kind = Exchanged<TypeParam>;
  this->ShowLocked(this->With({Kind::Named("a")}));
  this->ExpectLockWarning();
  this->ClickIn("importButton");
  EXPECT_TRUE(this->dialogs_.IsDone());
  this->ClickIn("importButton");
  EXPECT_EQ(this->Objects(), std::vector<TypeParam>{Kind::Named("a")});
  EXPECT_FALSE(this->WasModified());
}

// ---- What only Sets have

using SetExchangeTest = ExchangeTest<Set>;

TEST_F(SetExchangeTest, AnEmptySetIsItsVersionItsNameAndZero) {
  using namespace std::string_literals;
  Show(With({SetOf("empty", {})}));
  Export(QStringLiteral("empty"), PathOf("exported"));
  EXPECT_EQ(folder_.Read("exported"), "\x01\0\0\0\x05"s + "empty" + "\0\0\0\0"s);
  EXPECT_EQ(folder_.Read("exported"), Golden("set-empty"));
}

TEST_F(SetExchangeTest, ExportChoosesMostSignificantSubpatternsInTheFileAlone) {
  Show(With({SetOf("ends", {Of({Str(".")}), Of({Call("f(1,1)")})})}));
  // Writing the document's own file has chosen it already.
  TheFilter().Sets[0].Strings[0].MostSignificant = Pattern::kNotChosen;
  Export(QStringLiteral("ends"), PathOf("exported"));
  EXPECT_EQ(folder_.Read("exported"), Golden("set"));
  EXPECT_EQ(TheFilter().Sets[0].Strings[0].MostSignificant, Pattern::kNotChosen);
}

}  // namespace
}  // namespace zarvo
