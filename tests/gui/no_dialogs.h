// For programs in which nobody answers: any box or file dialog ends them.
#pragma once

#include <cstdio>
#include <cstdlib>

#include "ui/dialogs.h"

namespace zarvo::testing {

/// Says what was to be shown and ends the process with 3.
class NoDialogs : public Dialogs {
 public:
  Answer Message(QWidget* /*parent*/, MessageIcon /*icon*/, const QString& text,
                 MessageButtons /*buttons*/) override {
    Refuse(text);
  }
  void RunMessage(QWidget* /*parent*/, const QString& text) override { Refuse(text); }
  std::optional<QString> OpenFile(QWidget* /*parent*/, const FileRequest& /*request*/) override {
    Refuse(QStringLiteral("open"));
  }
  std::optional<QString> SaveFile(QWidget* /*parent*/, const FileRequest& /*request*/) override {
    Refuse(QStringLiteral("save"));
  }
  bool OpenWithAssociatedProgram(const QString& path) override { Refuse(path); }

 private:
  [[noreturn]] static void Refuse(const QString& text) {
    static_cast<void>(std::fprintf(stderr, "unexpected dialog: %s\n", qPrintable(text)));
    std::_Exit(3);
  }
};

}  // namespace zarvo::testing
