#include "model/filter_file.h"

#include "model/records.h"

namespace zarvo {
namespace {

constexpr std::string_view kMagic = "ZARVO BINARY";
constexpr std::int32_t kNewest = FilterHeader::kNewestFormatVersion;

// The first format version that holds a field; earlier ones give the default beside it.
constexpr std::int32_t kVersionSince = 2;
constexpr std::int32_t kAutoIncrementSince = 3;
constexpr std::int32_t kPasswordKeySince = 4;
constexpr std::int32_t kFunctionsSince = 6;
constexpr std::int32_t kAbsentVersion = 1;
constexpr std::int32_t kAbsentAutoIncrement = 0;
constexpr const char* kAbsentPasswordKey = "x";

// All that follows the magic and the format version, in the layout of one of the versions 1 to 6.
// Functions came with version 6 and so stand at the end of the file.
void SerializeLayout(Archive& archive, Filter& filter, std::int32_t layout) {
  const bool loading = archive.IsLoading();
  archive.Int32("Locked", filter.Locked);
  archive.Int32("ShowInEditorWhenLocked", filter.ShowInEditorWhenLocked);
  if (layout >= kAutoIncrementSince) {
    archive.Int32("AutoIncrement", filter.AutoIncrement);
  } else if (loading) {
    filter.AutoIncrement = kAbsentAutoIncrement;
  }
  archive.Text("Password", filter.Password);
  if (layout >= kPasswordKeySince) {
    archive.Text("PasswordKey", filter.PasswordKey);
  } else if (loading) {
    filter.PasswordKey = kAbsentPasswordKey;
  }
  archive.Text("Name", filter.Name);
  if (layout >= kVersionSince) {
    archive.Int32("Version", filter.Version);
  } else if (loading) {
    filter.Version = kAbsentVersion;
  }
  archive.Text("Author", filter.Author);
  archive.Text("Language", filter.Language);
  archive.Text("Description", filter.Description);
  archive.Text("Type", filter.Type);
  Serialize(archive, filter.Rules);
  Serialize(archive, filter.Sets);
  if (layout >= kFunctionsSince) {
    Serialize(archive, filter.Functions);
  } else if (loading) {
    filter.Functions = {};
  }
}

void Store(Archive& archive, Filter& filter) {
  std::string magic(kMagic);
  archive.Text("Magic", magic);
  archive.Int32("FormatVersion", filter.FormatVersion);
  // A layout that this build doesn't know can't be written, and another one would be a lie.
  if (filter.FormatVersion >= 1 && filter.FormatVersion <= kNewest) {
    SerializeLayout(archive, filter, filter.FormatVersion);
  }
}

void Load(Archive& archive, Filter& filter, VersionQuestions& questions, bool allow_newer) {
  std::string magic;
  archive.Text("Magic", magic);
  if (magic != kMagic) archive.Fail(ArchiveCode::WrongMagic, "Magic", 0);
  const std::size_t start = archive.Offset();
  archive.Int32("FormatVersion", filter.FormatVersion);
  const std::int32_t version = filter.FormatVersion;
  if (version > kNewest) {
    if (!allow_newer || !questions.LoadNewerFormat(version)) {
      archive.Fail(ArchiveCode::NewerFormatRefused, "FormatVersion", start);
    }
    SerializeLayout(archive, filter, kNewest);
  } else if (version >= 1) {
    SerializeLayout(archive, filter, version);
  }
  // Only the upper bound is checked: a version of 0 or less loads, and changes nothing but itself.
}

}  // namespace

std::string SaveInNewestFormatText(std::int32_t own_version) {
  return "The filter you're about to save uses file format version " + std::to_string(own_version) +
         ", while the newest file format version is " + std::to_string(kNewest) +
         ". Would you like to save this filter in the newest format? Otherwise some filter "
         "properties won't be stored. On the other hand, applications using older versions of "
         "ZarvoFilter library may not be able to read this file.";
}

std::string LoadNewerFormatText(std::int32_t file_version) {
  return "The filter you're about to load uses file format version " +
         std::to_string(file_version) + ", while the newest file format version I know about is " +
         std::to_string(kNewest) +
         ". I may attempt to read this file, but success is not guaranteed. Attempting to read "
         "won't damage the filter, but may cause your current application to crash. Would you "
         "like to try it?";
}

ArchiveResult SerializeFilter(Archive& archive, Filter& filter, VersionQuestions& questions,
                              bool allow_newer) {
  return RunArchive([&] {
    if (archive.IsLoading()) {
      Load(archive, filter, questions, allow_newer);
      return;
    }
    if (filter.AutoIncrement != 0) {
      filter.Version = static_cast<std::int32_t>(static_cast<std::uint32_t>(filter.Version) + 1);
    }
    if (filter.FormatVersion != kNewest && questions.SaveInNewestFormat(filter.FormatVersion)) {
      filter.FormatVersion = kNewest;
    }
    Store(archive, filter);
  });
}

std::string FilterFileBytes(Filter& filter) {
  std::string bytes;
  Archive archive = Archive::Storing(bytes);
  Store(archive, filter);
  return bytes;
}

}  // namespace zarvo
