#include "tests/gui/scripted_dialogs.h"

#include <utility>

namespace zarvo::testing {
namespace {

std::string MessageCall(MessageIcon icon, const std::string& text, MessageButtons buttons) {
  static constexpr const char* kIcons[] = {"information", "question", "exclamation", "stop"};
  static constexpr const char* kButtons[] = {"Ok", "Yes/No", "Yes/No/Cancel"};
  return std::string("message (") + kIcons[static_cast<int>(icon)] + ", " +
         kButtons[static_cast<int>(buttons)] + "): " + text;
}

std::string FileCall(const std::string& kind, std::string_view filters, std::string_view extension,
                     const QString& initial_name) {
  return kind + " " + std::string(filters) + ", extension " + std::string(extension) +
         ", initial name \"" + initial_name.toStdString() + "\"";
}

}  // namespace

void ScriptedDialogs::ExpectMessage(MessageIcon icon, const std::string& text,
                                    MessageButtons buttons, Answer answer,
                                    std::function<void()> meanwhile) {
  script_.push_back({MessageCall(icon, text, buttons), answer, {}, std::move(meanwhile)});
}

void ScriptedDialogs::ExpectOpen(const std::string& filters, const std::string& extension,
                                 std::optional<QString> path) {
  script_.push_back({FileCall("open", filters, extension, {}), Answer::Ok, std::move(path), {}});
}

void ScriptedDialogs::ExpectSave(const std::string& filters, const std::string& extension,
                                 const QString& initial_name, std::optional<QString> path) {
  script_.push_back(
      {FileCall("save", filters, extension, initial_name), Answer::Ok, std::move(path), {}});
}

ScriptedDialogs::Line ScriptedDialogs::Take(const std::string& call, Answer otherwise) {
  if (Next() != call) {
    ADD_FAILURE() << "unexpected " << call << "\nexpected   " << Next();
    return {call, otherwise, {}, {}};
  }
  Line line = std::move(script_.front());
  script_.pop_front();
  return line;
}

Answer ScriptedDialogs::Message(QWidget* /*parent*/, MessageIcon icon, const QString& text,
                                MessageButtons buttons) {
  const Answer least = buttons == MessageButtons::Ok      ? Answer::Ok
                       : buttons == MessageButtons::YesNo ? Answer::No
                                                          : Answer::Cancel;
  const Line line = Take(MessageCall(icon, text.toStdString(), buttons), least);
  if (line.Meanwhile) line.Meanwhile();
  return line.TheAnswer;
}

void ScriptedDialogs::RunMessage(QWidget* parent, const QString& text) {
  Message(parent, MessageIcon::Stop, text, MessageButtons::Ok);
}

std::optional<QString> ScriptedDialogs::OpenFile(QWidget* /*parent*/, const FileRequest& request) {
  return Take(FileCall("open", request.Filters, request.DefaultExtension, request.InitialName),
              Answer::Cancel)
      .Path;
}

std::optional<QString> ScriptedDialogs::SaveFile(QWidget* /*parent*/, const FileRequest& request) {
  return Take(FileCall("save", request.Filters, request.DefaultExtension, request.InitialName),
              Answer::Cancel)
      .Path;
}

}  // namespace zarvo::testing
