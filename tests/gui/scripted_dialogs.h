// Answers message boxes and file dialogs by a script, and fails the test on anything else.
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "ui/dialogs.h"

namespace zarvo::testing {

/// Each call must be the next one of the script, with exactly this icon, text and buttons (or these
/// filters, extension and initial name). A call that isn't fails the test, and so does a line of
/// the script that was never asked for.
class ScriptedDialogs : public Dialogs {
 public:
  ~ScriptedDialogs() override { EXPECT_TRUE(script_.empty()) << "never asked: " << Next(); }

  /// While the box is open, meanwhile is called.
  void ExpectMessage(MessageIcon icon, const std::string& text, MessageButtons buttons,
                     Answer answer, std::function<void()> meanwhile = {});
  /// path is what the user chooses; nothing is Cancel.
  void ExpectOpen(const std::string& filters, const std::string& extension,
                  std::optional<QString> path);
  void ExpectSave(const std::string& filters, const std::string& extension,
                  const QString& initial_name, std::optional<QString> path);

  [[nodiscard]] bool IsDone() const { return script_.empty(); }

  Answer Message(QWidget* parent, MessageIcon icon, const QString& text,
                 MessageButtons buttons) override;
  /// In the script it is a message like any other.
  void RunMessage(QWidget* parent, const QString& text) override;
  std::optional<QString> OpenFile(QWidget* parent, const FileRequest& request) override;
  std::optional<QString> SaveFile(QWidget* parent, const FileRequest& request) override;

 private:
  struct Line {
    std::string Call;  // the whole of the expected call, as text
    Answer TheAnswer = Answer::Ok;
    std::optional<QString> Path;
    std::function<void()> Meanwhile;
  };

  [[nodiscard]] std::string Next() const { return script_.empty() ? "" : script_.front().Call; }
  // The line for this call; a failed test and an empty line where the script has another one.
  Line Take(const std::string& call, Answer otherwise);

  std::deque<Line> script_;
};

}  // namespace zarvo::testing
