#include "ui/byte_text.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "model/locale_code_page.h"

namespace zarvo {
namespace {

constexpr std::size_t kUnits = std::size_t{std::numeric_limits<char16_t>::max()} + 1;
constexpr char kStandIn = '?';

// Line ends that the clipboard's plain text can't tell survive in this format, which is UTF-8.
const QString& ExactTextFormat() {
  static const QString format = QStringLiteral("application/x-zarvo-composer-text");
  return format;
}

// A code page laid out for texts of many megabytes. The characters of every page of one byte a
// character are single units of UTF-16.
struct WindowText {
  explicit WindowText(CodePage code_page) : Page(std::move(code_page)), Bytes(kUnits, kStandIn) {
    for (std::size_t byte = 0; byte < Characters.size(); ++byte) {
      const char32_t character = Page.Character(static_cast<unsigned char>(byte));
      Q_ASSERT(character < kUnits);
      Characters[byte] = static_cast<char16_t>(character);
      Bytes[Characters[byte]] = static_cast<char>(byte);
    }
    Bytes[Characters[0]] = kStandIn;
  }

  [[nodiscard]] bool Has(char16_t unit) const {
    return Characters[static_cast<unsigned char>(Bytes[unit])] == unit;
  }

  CodePage Page;
  std::array<char16_t, 256> Characters{};
  std::vector<char> Bytes;
};

CodePage LocaleCodePage() {
  std::optional<CodePage> page = CodePage::Find(LocaleCodePageName());
  // Where the system's converter is installed without its tables, ASCII is built in; its upper
  // half then stands for the characters of the same numbers.
  if (!page) page = CodePage::Find("ASCII");
  return std::move(page).value();
}

WindowText& Current() {
  static WindowText current(LocaleCodePage());
  return current;
}

}  // namespace

const CodePage& WindowCodePage() { return Current().Page; }

void SetWindowCodePage(const CodePage& page) { Current() = WindowText(page); }

QString FromBytes(std::string_view bytes) {
  const WindowText& current = Current();
  QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
  QChar* next = text.data();
  for (const char byte : bytes) *next++ = current.Characters[static_cast<unsigned char>(byte)];
  return text;
}

std::string ToBytes(QStringView text) {
  const WindowText& current = Current();
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(text.size()));
  bool in_pair = false;
  for (const QChar unit : text) {
    // The second half of a pair has had its question mark.
    if (!(in_pair && unit.isLowSurrogate())) bytes += current.Bytes[unit.unicode()];
    in_pair = unit.isHighSurrogate();
  }
  return bytes;
}

QString Storable(const QString& text) { return IsStorable(text) ? text : FromBytes(ToBytes(text)); }

bool IsStorable(QStringView text) {
  const WindowText& current = Current();
  for (const QChar unit : text) {
    if (!current.Has(unit.unicode())) return false;
  }
  return true;
}

std::string_view UpToZero(std::string_view bytes) { return bytes.substr(0, bytes.find('\0')); }

std::unique_ptr<QKeyEvent> StorableCopy(const QKeyEvent& event) {
  if (IsStorable(event.text())) return nullptr;
  return std::make_unique<QKeyEvent>(event.type(), event.key(), event.modifiers(),
                                     event.nativeScanCode(), event.nativeVirtualKey(),
                                     event.nativeModifiers(), Storable(event.text()),
                                     event.isAutoRepeat(), static_cast<quint16>(event.count()));
}

std::unique_ptr<QInputMethodEvent> StorableCopy(const QInputMethodEvent& event) {
  if (IsStorable(event.commitString())) return nullptr;
  auto copy = std::make_unique<QInputMethodEvent>(event.preeditString(), event.attributes());
  copy->setCommitString(Storable(event.commitString()), event.replacementStart(),
                        event.replacementLength());
  return copy;
}

std::unique_ptr<QMimeData> ToMimeData(const QString& text) {
  auto data = std::make_unique<QMimeData>();
  QString plain = text;
  plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  data->setText(plain);
  data->setData(ExactTextFormat(), text.toUtf8());
  return data;
}

QString FromMimeData(const QMimeData& data) {
  if (data.hasFormat(ExactTextFormat())) return QString::fromUtf8(data.data(ExactTextFormat()));
  QString text = data.text();
#ifdef Q_OS_WIN
  // The toolkit has made LF of every CR LF.
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(u'\n', QStringLiteral("\r\n"));
#endif
  return text;
}

}  // namespace zarvo
