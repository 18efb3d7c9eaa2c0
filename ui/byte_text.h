// Between the bytes of the document and the characters on the screen, for every window.
#pragma once

#include <QKeyEvent>
#include <QString>
#include <QStringView>
#include <memory>
#include <string>
#include <string_view>

#include "model/code_page.h"

class QInputMethodEvent;
class QMimeData;

namespace zarvo {

/// The code page of all windows: the locale's, until another is set. Edits that are filled already
/// keep their characters, so it is set before the first window is made.
[[nodiscard]] const CodePage& WindowCodePage();
void SetWindowCodePage(const CodePage& page);

/// One character for each byte.
[[nodiscard]] QString FromBytes(std::string_view bytes);

/// One byte for each character; "?" for one that the page lacks, and for the zero character, which
/// no text may hold.
[[nodiscard]] std::string ToBytes(QStringView text);

/// What is left of the text once it is stored: FromBytes(ToBytes(text)).
[[nodiscard]] QString Storable(const QString& text);
[[nodiscard]] bool IsStorable(QStringView text);

/// The text of loaded bytes, which ends at their first zero byte.
[[nodiscard]] std::string_view UpToZero(std::string_view bytes);

/// The same event with storable characters, or null where it has no others. Accepting the copy
/// doesn't accept the event.
[[nodiscard]] std::unique_ptr<QKeyEvent> StorableCopy(const QKeyEvent& event);
/// The commit string counts; what is still being composed may become another character.
[[nodiscard]] std::unique_ptr<QInputMethodEvent> StorableCopy(const QInputMethodEvent& event);

/// The text as other programs expect it, lines ending in LF, and beside it as it is.
[[nodiscard]] std::unique_ptr<QMimeData> ToMimeData(const QString& text);

/// The text of a clipboard or a drag, as it is where ToMimeData made it.
[[nodiscard]] QString FromMimeData(const QMimeData& data);

}  // namespace zarvo
