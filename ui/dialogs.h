// The one way in which windows show message boxes and ask for files. Tests put a script in its
// place.
#pragma once

#include <QString>
#include <optional>
#include <string_view>

class QWidget;

namespace zarvo {

enum class MessageIcon { Information, Question, Exclamation, Stop };
enum class MessageButtons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Yes, No, Cancel };

/// What a file dialog shows.
struct FileRequest {
  /// Pairs of a description and a pattern, each ended by "|", as the windows' texts have them.
  std::string_view Filters;
  /// Appended to a name without an extension.
  std::string_view DefaultExtension;
  /// The name that stands in the dialog at first; may be empty.
  QString InitialName;
};

/// All calls are modal and return when the user has answered. Texts are shown as they are, without
/// markup.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  /// A box of the program's caption. Closing it means Cancel, or No or Ok where there is no Cancel.
  virtual Answer Message(QWidget* parent, MessageIcon icon, const QString& text,
                         MessageButtons buttons) = 0;
  /// A message of a run with the stop icon and an OK button, which blocks only the parent. A run
  /// may show one at every match, and the rest of the program, its close box above all, must stay
  /// within reach meanwhile.
  virtual void RunMessage(QWidget* parent, const QString& text) = 0;
  /// The path of an existing file, or nothing after Cancel.
  virtual std::optional<QString> OpenFile(QWidget* parent, const FileRequest& request) = 0;
  /// The path to write to, or nothing after Cancel. Asks before an existing file is chosen.
  virtual std::optional<QString> SaveFile(QWidget* parent, const FileRequest& request) = 0;
};

/// The caption of message boxes and the name of the program.
inline constexpr const char* kProgramName = "Zarvo Composer";

/// The toolkit's own dialogs.
class ToolkitDialogs : public Dialogs {
 public:
  Answer Message(QWidget* parent, MessageIcon icon, const QString& text,
                 MessageButtons buttons) override;
  void RunMessage(QWidget* parent, const QString& text) override;
  std::optional<QString> OpenFile(QWidget* parent, const FileRequest& request) override;
  std::optional<QString> SaveFile(QWidget* parent, const FileRequest& request) override;
};

/// The toolkit's form of "Text files (*.txt)|*.txt|All files (*.*)|*.*|": one line a pair. The
/// pattern "*.*" means all files, also those without a dot, and becomes "*".
[[nodiscard]] QStringList ToolkitFilters(std::string_view filters);

}  // namespace zarvo
