// Both edits of bytes as tests use them: by what a user does, and by the few things in which the
// toolkit's two edits differ.
#pragma once

#include <QString>
#include <string>

#include "ui/byte_line_edit.h"
#include "ui/byte_text_edit.h"

class QMenu;

namespace zarvo::testing {

/// The code pages that a window may have.
constexpr const char* kCodePages[] = {
    "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
    "windows-1255", "windows-1256", "windows-1257", "windows-1258", "CP874"};

/// Characters of no single-byte page; the second one takes two units of UTF-16.
inline const QString kLackedEverywhere = QStringLiteral("\u4E2D");
inline const QString kPair = QStringLiteral("\U0001F600");

/// Every byte that a text may hold.
[[nodiscard]] std::string AllBytes();

void UsePage(const char* name);

[[nodiscard]] int Cursor(const ByteLineEdit& edit);
[[nodiscard]] int Cursor(const ByteTextEdit& edit);
void Select(ByteLineEdit& edit, int from, int to);
void Select(ByteTextEdit& edit, int from, int to);
[[nodiscard]] bool CanUndo(const ByteLineEdit& edit);
[[nodiscard]] bool CanUndo(const ByteTextEdit& edit);
[[nodiscard]] QString Shown(const ByteLineEdit& edit);
[[nodiscard]] QString Shown(const ByteTextEdit& edit);
[[nodiscard]] QWidget& DropTarget(ByteLineEdit& edit);
[[nodiscard]] QWidget& DropTarget(ByteTextEdit& edit);

/// One key press that brings the text.
void Type(QWidget& edit, const QString& text);
void PressPaste(QWidget& edit);
/// By way of the clipboard.
void Paste(QWidget& edit, const QString& text);
void Compose(QWidget& edit, const QString& preedit, const QString& commit);
void Drop(QWidget& target, const QString& text);
/// Chooses Paste in a context menu.
void TriggerPaste(QMenu& menu);

}  // namespace zarvo::testing
