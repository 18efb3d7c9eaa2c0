#include "app/settings.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace zarvo {

QString InstallationFolder() {
  const QSettings settings(QSettings::NativeFormat, QSettings::SystemScope,
                           QStringLiteral("Tormelin"), QStringLiteral("Zarvo Composer"));
  QString folder = settings.value(QStringLiteral("Path")).toString();
  if (folder.isEmpty()) folder = QStringLiteral(".");
  return folder + QDir::separator();
}

QString UserDataFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QDir::separator();
}

}  // namespace zarvo
