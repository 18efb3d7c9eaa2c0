#include "app/document.h"

#include <QFile>

namespace zarvo {

Document::Result Document::Load(VersionQuestions& questions) {
  std::string bytes;
  if (ReadFile(QFile::encodeName(Path).toStdString(), bytes)) return Result::Failed;
  Archive archive = Archive::Loading(bytes);
  const ArchiveResult result = SerializeFilter(archive, Filter, questions, true);
  if (result.Ok()) return Result::Done;
  return result.Code == ArchiveCode::NewerFormatRefused ? Result::Declined : Result::Failed;
}

Document::Result Document::Save(VersionQuestions& questions) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  if (!SerializeFilter(archive, Filter, questions, false).Ok()) return Result::Failed;
  if (WriteFile(QFile::encodeName(Path).toStdString(), bytes)) return Result::Failed;
  return Result::Done;
}

}  // namespace zarvo
