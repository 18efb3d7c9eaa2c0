#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>
#include <QWidget>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/about_dialog.h"
#include "app/help_window.h"
#include "app/main_window.h"
#include "model/filter.h"
#include "tests/gui/scripted_dialogs.h"
#include "tests/support/builders.h"
#include "tests/support/temporary_folder.h"
#include "ui/add_to_predefined_dialog.h"
#include "ui/functions_editor.h"
#include "ui/password_dialogs.h"
#include "ui/predefined_dialog.h"
#include "ui/preview_window.h"
#include "ui/rules_editor.h"
#include "ui/sets_editor.h"
#include "ui/string_editor.h"

namespace zarvo {
namespace {

using testing::ScriptedDialogs;
using testing::TemporaryFolder;

// All that a window may need, and the window.
struct Stage {
  TemporaryFolder Folder;
  ScriptedDialogs Dialogs;
  Filter TheFilter;
  SubpatternLibrary Library{Folder.Path() + "/", ""};
  std::unique_ptr<QDialog> Window;

  [[nodiscard]] QString FolderPath() const {
    return QString::fromStdString(Folder.Path()) + QLatin1Char('/');
  }
};

template <typename Editor>
void MakeObjectEditor(Stage& stage) {
  stage.TheFilter = testing::FilterOf(
      {testing::Replace(testing::Of({testing::Str("ab")}), testing::Of({testing::Str("c")})),
       testing::Insert(testing::Of({testing::Str("ab")}), 1, {})},
      {testing::SetOf("a", {testing::Of({testing::Str("b")})}), testing::SetOf("c", {})},
      {testing::FunctionOf("d", {{"e", "f"}}), testing::FunctionOf("g", {})});
  for (Rule& rule : stage.TheFilter.Rules) rule.Name = "h";
  stage.Window = std::make_unique<Editor>(
      EditorHost{{stage.Dialogs, stage.Library, {}}, stage.TheFilter, [] {}, [] {}, [] {}});
}

struct WindowCase {
  const char* Name;
  std::function<void(Stage&)> Make;
};

void PrintTo(const WindowCase& window, std::ostream* out) { *out << window.Name; }

void MakeStringEditor(Stage& stage, StringEditor::Mode mode) {
  stage.Window = std::make_unique<StringEditor>(
      EditorServices{stage.Dialogs, stage.Library, {}}, mode,
      testing::Of({testing::List("ab"), testing::Str(""), testing::Str("c")}),
      stage.TheFilter.Functions, false, nullptr);
}

std::vector<WindowCase> AllWindows() {
  return {
      {"Main",
       [](Stage& stage) {
         stage.Window = std::make_unique<MainWindow>(stage.FolderPath(), stage.Dialogs);
       }},
      {"Preview",
       [](Stage& stage) {
         stage.Window = std::make_unique<PreviewWindow>(stage.TheFilter, stage.Dialogs);
       }},
      {"Help",
       [](Stage& stage) {
         stage.Folder.Write("Help.html",
                            "<p>first <a href='#end'>link</a><p><a name='end'>end</a>");
         auto window = std::make_unique<HelpWindow>(stage.FolderPath(), stage.Dialogs);
         window->ShowContents("Help.html");
         stage.Window = std::move(window);
       }},
      {"About", [](Stage& stage) { stage.Window = std::make_unique<AboutDialog>(); }},
      {"StringEditorOfAPattern",
       [](Stage& stage) { MakeStringEditor(stage, StringEditor::Mode::Pattern); }},
      {"StringEditorOfAReplacement",
       [](Stage& stage) { MakeStringEditor(stage, StringEditor::Mode::Replacement); }},
      {"RulesEditor", MakeObjectEditor<RulesEditor>},
      {"SetsEditor", MakeObjectEditor<SetsEditor>},
      {"FunctionsEditor", MakeObjectEditor<FunctionsEditor>},
      {"AddToPredefined",
       [](Stage& stage) { stage.Window = std::make_unique<AddToPredefinedDialog>(); }},
      {"Predefined",
       [](Stage& stage) {
         stage.Folder.Write("Subpatterns.dat",
                            "[General]\nStrings=1\n[Strings]\nName1=a\nString1=b\nRender1=c\n");
         stage.Window = std::make_unique<PredefinedDialog>(stage.Library, LibrarySection::Strings,
                                                           false, nullptr);
       }},
      {"EnterPassword",
       [](Stage& stage) { stage.Window = std::make_unique<EnterPasswordDialog>(); }},
      {"PasswordChange",
       [](Stage& stage) { stage.Window = std::make_unique<PasswordChangeDialog>(stage.Dialogs); }},
  };
}

class EveryWindow : public ::testing::TestWithParam<WindowCase> {
 protected:
  void SetUp() override {
    GetParam().Make(stage_);
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
  }

  QDialog& Window() { return *stage_.Window; }

  // The window's own widgets: those of its child windows and menus are not.
  std::vector<QWidget*> Widgets() {
    std::vector<QWidget*> widgets;
    for (QWidget* widget : Window().findChildren<QWidget*>()) {
      if (widget->window() == &Window()) widgets.push_back(widget);
    }
    return widgets;
  }

  Stage stage_;
};

std::string Describe(const QWidget& widget) {
  return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

bool IsInteractive(QAccessible::Role role) {
  switch (role) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::PageTabList:
    case QAccessible::PageTab:
    case QAccessible::ProgressBar:
    case QAccessible::Link:
      return true;
    default:
      return false;
  }
}

// Parts that the toolkit makes within a control are called what the control is called.
bool IsPartOfControl(const QAccessibleInterface& part) {
  const QAccessible::Role role = part.role();
  return role == QAccessible::ScrollBar || part.state().invisible;
}

void ExpectNames(QAccessibleInterface& part, std::vector<std::string>& path, std::size_t& named) {
  const QString name = part.text(QAccessible::Name);
  const std::string object =
      part.object() != nullptr ? part.object()->objectName().toStdString() : std::string();
  path.push_back(object + " (role " + std::to_string(part.role()) + ")");
  if ((part.state().focusable || IsInteractive(part.role())) && !IsPartOfControl(part)) {
    EXPECT_FALSE(name.trimmed().isEmpty()) << ::testing::PrintToString(path);
    EXPECT_FALSE(name.endsWith(u':')) << ::testing::PrintToString(path);
    ++named;
  }
  // What a combo box or a pane is made of is spoken of by the name of the whole.
  if (part.role() != QAccessible::ComboBox) {
    for (int i = 0; i < part.childCount(); ++i) {
      QAccessibleInterface* child = part.child(i);
      ASSERT_NE(child, nullptr);
      const auto* widget = qobject_cast<QWidget*>(child->object());
      if (widget == nullptr || !widget->isWindow()) ExpectNames(*child, path, named);
    }
  }
  path.pop_back();
}

TEST_P(EveryWindow, NamesItsControlsForScreenReaders) {
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&Window());
  ASSERT_NE(root, nullptr);
  EXPECT_NE(root->text(QAccessible::Name), "");
  std::vector<std::string> path;
  std::size_t named = 0;
  ExpectNames(*root, path, named);
  EXPECT_GT(named, 0U);
}

TEST_P(EveryWindow, ReachesEveryControlByTabAndTheArrowKeys) {
  std::set<QWidget*> to_reach;
  for (QWidget* widget : Widgets()) {
    if (widget->focusPolicy() != Qt::NoFocus && widget->focusProxy() == nullptr &&
        widget->isVisible() && widget->isEnabled()) {
      to_reach.insert(widget);
    }
  }
  ASSERT_FALSE(to_reach.empty());
  const std::size_t twice_around = 2 * to_reach.size();
  for (std::size_t i = 0; i < twice_around; ++i) {
    QTest::keyClick(Window().windowHandle(), Qt::Key_Tab);
    ASSERT_NE(Window().focusWidget(), nullptr);
    to_reach.erase(Window().focusWidget());
    if (const auto* radio = qobject_cast<QRadioButton*>(Window().focusWidget())) {
      // The arrow keys lead to the others of its group.
      if (radio->group() != nullptr) {
        for (QAbstractButton* other : radio->group()->buttons()) to_reach.erase(other);
      }
    }
  }
  for (const QWidget* widget : to_reach) ADD_FAILURE() << "not reached: " << Describe(*widget);
}

TEST_P(EveryWindow, ReachesItsControlsByShiftTabInTheOppositeOrder) {
  std::vector<QWidget*> order;
  do {
    order.push_back(Window().focusWidget());
    QTest::keyClick(Window().windowHandle(), Qt::Key_Tab);
  } while (Window().focusWidget() != order.front() && order.size() < 200);
  ASSERT_LT(order.size(), 200U) << "the order never comes back to its start";
  for (std::size_t i = order.size(); i > 0; --i) {
    QTest::keyClick(Window().windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(Window().focusWidget(), order[i - 1]) << Describe(*order[i - 1]);
  }
}

TEST_P(EveryWindow, LinksItsControlsInBothDirections) {
  for (const QWidget* widget : Widgets()) {
    EXPECT_EQ(widget->nextInFocusChain()->previousInFocusChain(), widget) << Describe(*widget);
    EXPECT_EQ(widget->previousInFocusChain()->nextInFocusChain(), widget) << Describe(*widget);
  }
}

TEST_P(EveryWindow, GivesEachOfItsObjectsANameOfItsOwn) {
  std::set<std::string> names;
  for (const QWidget* widget : Widgets()) {
    const std::string name = widget->objectName().toStdString();
    if (name.rfind("qt_", 0) == 0) continue;
    if (name.empty()) {
      // What stands for another control has that one's name.
      EXPECT_TRUE(widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() != nullptr)
          << "without a name: " << Describe(*widget);
      continue;
    }
    EXPECT_TRUE(names.insert(name).second) << "twice: " << Describe(*widget);
  }
  EXPECT_FALSE(names.empty());
  EXPECT_FALSE(Window().objectName().isEmpty());
}

TEST_P(EveryWindow, HasACaption) { EXPECT_NE(Window().windowTitle(), ""); }

TEST_P(EveryWindow, ShowsNoTextWithMarkup) {
  for (const QLabel* label : Window().findChildren<QLabel*>()) {
    EXPECT_FALSE(Qt::mightBeRichText(label->text())) << Describe(*label);
  }
}

std::string NameOfCase(const ::testing::TestParamInfo<WindowCase>& window) {
  return window.param.Name;
}

INSTANTIATE_TEST_SUITE_P(All, EveryWindow, ::testing::ValuesIn(AllWindows()), NameOfCase);

// ---- The names themselves

std::string NameOf(QWidget& window, const char* object_name) {
  QWidget* control = window.findChild<QWidget*>(QString::fromLatin1(object_name));
  if (control == nullptr) return std::string("no control ") + object_name;
  return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name).toStdString();
}

struct NamedControl {
  const char* Object;
  const char* Name;
};

TEST(AccessibleNames, OfThePreviewAreItsLabelsWithoutColonsCaptionsAndToolTips) {
  Stage stage;
  PreviewWindow window(stage.TheFilter, stage.Dialogs);
  for (const auto& [object, name] :
       std::initializer_list<NamedControl>{{"originalEdit", "Original"},
                                           {"modifiedEdit", "Modified"},
                                           {"loadTextButton", "Load text file"},
                                           {"updateButton", "Update"},
                                           {"progressBar", "Progress"}}) {
    EXPECT_EQ(NameOf(window, object), name);
  }
}

TEST(AccessibleNames, OfTheMainWindowAreItsLabelsWithoutColonsCaptionsAndToolTips) {
  Stage stage;
  MainWindow window(stage.FolderPath(), stage.Dialogs);
  for (const auto& [object, name] :
       std::initializer_list<NamedControl>{{"nameEdit", "Name"},
                                           {"versionEdit", "Version"},
                                           {"autoIncrementBox", "Auto-increment"},
                                           {"typeBox", "Type"},
                                           {"authorEdit", "Author"},
                                           {"languageEdit", "Language"},
                                           {"descriptionEdit", "Description"},
                                           {"showWhenLockedBox", "Show in editor when locked"},
                                           {"lockBox", "Lock"},
                                           {"setPasswordButton", "Set password..."},
                                           {"rulesCount", "Rules"},
                                           {"functionsCount", "Functions"},
                                           {"setsCount", "Sets"},
                                           {"editRulesButton", "Edit rules"},
                                           {"editFunctionsButton", "Edit functions"},
                                           {"editSetsButton", "Edit sets"},
                                           {"autoUpdateBox", "Auto-update"},
                                           {"showPreviewButton", "Show preview"},
                                           {"newButton", "New"},
                                           {"openButton", "Open"},
                                           {"saveButton", "Save/Save as"},
                                           {"mergeButton", "Merge"},
                                           {"checkButton", "Integrity check"},
                                           {"helpButton", "Help"},
                                           {"aboutButton", "About Zarvo Composer"},
                                           {"exitButton", "Exit"}}) {
    EXPECT_EQ(NameOf(window, object), name);
  }
}

TEST(AccessibleNames, OfThePasswordDialogsSayWhichPassword) {
  Stage stage;
  EnterPasswordDialog enter;
  EXPECT_EQ(NameOf(enter, "passwordEdit"), "Password");
  PasswordChangeDialog change(stage.Dialogs);
  EXPECT_EQ(NameOf(change, "oldPasswordEdit"), "Old password");
  EXPECT_EQ(NameOf(change, "newPasswordEdit"), "New password");
  EXPECT_EQ(NameOf(change, "retypeEdit"), "Retype new");
}

TEST(AccessibleNames, OfTheStringEditorAreItsLabelsWithoutColonsCaptionsAndToolTips) {
  Stage stage;
  MakeStringEditor(stage, StringEditor::Mode::Pattern);
  for (const auto& [object, name] :
       std::initializer_list<NamedControl>{{"outputEdit", "Output"},
                                           {"newButton", "New"},
                                           {"deleteButton", "Delete"},
                                           {"moveLeftButton", "Move left"},
                                           {"moveRightButton", "Move right"},
                                           {"textEdit", "Subpattern text"},
                                           {"renderEdit", "Render"},
                                           {"stringRadio", "String"},
                                           {"stringsMenuButton", "Strings menu"},
                                           {"codeRadio", "Character code"},
                                           {"codesMenuButton", "Character codes menu"},
                                           {"functionRadio", "Function"},
                                           {"functionsMenuButton", "Functions menu"},
                                           {"listRadio", "Character list"},
                                           {"listsMenuButton", "Character lists menu"},
                                           {"negatedBox", "Neg."},
                                           {"mostSignificantBox", "Most significant"},
                                           {"findButton", "Find"},
                                           {"okButton", "OK"},
                                           {"cancelButton", "Cancel"},
                                           {"helpButton", "Help"}}) {
    EXPECT_EQ(NameOf(*stage.Window, object), name);
  }
  // The toolkit speaks of a tab bar by its current tab.
  EXPECT_EQ(stage.Window->findChild<QTabBar*>()->accessibleName(), "Subs");
}

TEST(AccessibleNames, OfAnEmptySubpatternsTabIsItsNumber) {
  Stage stage;
  MakeStringEditor(stage, StringEditor::Mode::Pattern);
  QAccessibleInterface* tabs =
      QAccessible::queryAccessibleInterface(stage.Window->findChild<QTabBar*>());
  ASSERT_GE(tabs->childCount(), 3);
  EXPECT_EQ(tabs->child(0)->text(QAccessible::Name), "[a, b]");
  EXPECT_EQ(tabs->child(1)->text(QAccessible::Name), "Subpattern 2");
}

TEST(AccessibleNames, NoTwoControlsOfTheMainWindowSoundTheSame) {
  Stage stage;
  MainWindow window(stage.FolderPath(), stage.Dialogs);
  std::set<std::string> names;
  for (QWidget* control : window.findChildren<QWidget*>()) {
    if (control->window() != &window || control->focusPolicy() == Qt::NoFocus ||
        control->focusProxy() != nullptr) {
      continue;
    }
    const std::string name = NameOf(window, control->objectName().toLatin1().constData());
    EXPECT_TRUE(names.insert(name).second) << name;
  }
}

TEST(AccessibleNames, OfTheMenusAreThoseOfTheirCommands) {
  Stage stage;
  MainWindow window(stage.FolderPath(), stage.Dialogs);
  for (const QMenu* menu : window.findChildren<QMenu*>()) {
    EXPECT_FALSE(menu->objectName().isEmpty());
    EXPECT_FALSE(menu->actions().isEmpty());
    for (const QAction* action : menu->actions()) EXPECT_NE(action->text(), "");
  }
}

}  // namespace
}  // namespace zarvo
