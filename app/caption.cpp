#include "app/caption.h"

#include <QDir>

#include "ui/dialogs.h"

namespace zarvo {
namespace {

bool Separates(QChar character) { return character == u'\\' || character == QDir::separator(); }

}  // namespace

QString CaptionForPath(const QString& path) {
  const QString program = QString::fromUtf8(kProgramName);
  if (path.isEmpty()) return QStringLiteral("Untitled - ") + program;
  // Takes characters from the end, up to a separator, or up to the first one, which is not taken.
  qsizetype start = path.size();
  while (start > 1 && !Separates(path[start - 1])) --start;
  // A character of two code units is one.
  if (start == 1 && start < path.size() && path[0].isHighSurrogate()) ++start;
  return path.mid(start) + QStringLiteral(" - ") + program;
}

}  // namespace zarvo
