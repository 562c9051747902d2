#include "config/setting_stores.h"

#include "core/language.h"
#include "core/message_box.h"
#include "core/own_place.h"
#include "core/printer_store.h"
#include "core/process_state.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace ostrel {
namespace {

constexpr char16_t kVersionName[] = u"version";
constexpr char16_t kParameters[] = u"UIParam";
constexpr char16_t kFavorites[] = u"savesetting";
constexpr char16_t kCurrent[] = u"cursetting";
constexpr char16_t kCustomPapers[] = u"cuspapersetting";
constexpr char16_t kWatermarks[] = u"watermarksetting";

constexpr char kContainerType[] = "null";
constexpr char kRecordType[] = "binary";

using VersionValue = std::array<std::byte, kCfgVersion.size()>;
constexpr VersionValue kCurrentVersion = std::bit_cast<VersionValue>(kCfgVersion);

using Path = std::array<char16_t, kMaxPathUnits>;

// ---- Names and records --------------------------------------------------------------------------

// A record's name as the stores work with it.
class RecordName {
 public:
  explicit RecordName(std::u16string_view name) : accepted_(name.size() <= kStoreNameUnits) {
    CopyText(text_, name);
  }
  explicit RecordName(const char16_t* name) : RecordName(CallerText(name)) {}
  // False for a name that is refused before the file is touched.
  bool accepted() const { return accepted_; }
  const char16_t* get() const { return text_.data(); }

 private:
  std::array<char16_t, kStoreNameUnits> text_;
  bool accepted_;
};

FavoriteRecord Pack(const UIContext& context, std::u16string_view name) {
  FavoriteRecord record;
  record.privateDevmode = context.devmode.privateDevmode;
  record.publicDevmode = context.devmode.publicDevmode;
  CopyText(record.Name, name);
  return record;
}

void Unpack(const FavoriteRecord& record, UIContext& context) {
  context.devmode.privateDevmode = record.privateDevmode;
  context.devmode.publicDevmode = record.publicDevmode;
  context.privatePointer = &context.devmode.privateDevmode;
  context.publicPointer = &context.devmode.publicDevmode;
}

template <typename Record>
std::span<const std::byte> BytesOf(const Record& record) {
  return std::as_bytes(std::span(&record, 1));
}

template <typename Record>
std::span<std::byte> WritableBytesOf(Record& record) {
  return std::as_writable_bytes(std::span(&record, 1));
}

// The value of a node that must have exactly this length.
bool CopyValueOfLength(const CfgNode* node, std::span<std::byte> value) {
  if (node == nullptr || node->len < 0 || static_cast<std::size_t>(node->len) != value.size()) {
    return false;
  }
  CfgCopyValue(*node, value);
  return true;
}

// ---- The opened file ----------------------------------------------------------------------------

Path SettingsPath() {
  Path path;
  GetSettingsFilePath(path);
  return path;
}

ScopedCfg OpenSettingsFile() {
  return ScopedCfg(CfgOpen(SettingsPath().data()));
}

// The settings file with one of its branches found.
class OpenBranch {
 public:
  explicit OpenBranch(const char16_t* name) : file_(OpenSettingsFile()) {
    if (file_ != nullptr) {
      branch_ = CfgFindChild(CfgFindChild(file_->root, kParameters), name);
    }
  }
  explicit operator bool() const { return branch_ != nullptr; }
  CfgNode* get() const { return branch_; }
  bool Save() const { return CfgSave(file_.get()); }

  // Puts a record at the end of the branch and writes the file.
  bool AddAndSave(const char16_t* name, std::span<const std::byte> value) const {
    return CfgAddChild(branch_, name, kRecordType, value.data(),
                       static_cast<std::int32_t>(value.size())) != nullptr &&
           Save();
  }

 private:
  ScopedCfg file_;
  CfgNode* branch_ = nullptr;
};

int ListNames(const CfgNode* branch, NameList& names, std::size_t capacity) {
  const std::size_t units = std::min(capacity, NameList::kRows) * NameList::kRowUnits;
  return static_cast<int>(
      CfgListChildren(branch, {names.rows.front().data(), units}, NameList::kRowUnits));
}

// Reads the custom papers of a branch in list order, until `take` says that it has enough.
template <typename Take>
void ForEachCustomPaper(CustomPaperRecord& record, Take take) {
  const OpenBranch branch(kCustomPapers);
  NameList names;
  const int count = ListNames(branch.get(), names, NameList::kRows);
  for (int i = 0; i < count; ++i) {
    const RecordName name(FieldText(names.rows[static_cast<std::size_t>(i)]));
    if (name.accepted() &&
        CopyValueOfLength(CfgFindChild(branch.get(), name.get()), WritableBytesOf(record)) &&
        !take(record)) {
      return;
    }
  }
}

// ---- Making the file ----------------------------------------------------------------------------

bool EnsureContainer(CfgNode* parent, const char16_t* name) {
  return CfgFindChild(parent, name) != nullptr ||
         CfgAddChild(parent, name, kContainerType, nullptr, 0) != nullptr;
}

bool InitBranches(std::span<const char16_t* const> branches) {
  const Path path = SettingsPath();
  ScopedCfg file(CfgOpen(path.data()));
  if (file == nullptr) {
    return false;
  }
  if (CfgFindChild(file->root, kVersionName) == nullptr) {
    // An empty file or one that isn't ours. Whatever it held is gone, without a word.
    World().files.DeleteFileW(path.data());
    file.reset(CfgOpen(path.data()));
    if (file == nullptr) {
      return false;
    }
  }
  if (!EnsureContainer(file->root, kParameters)) {
    return false;
  }
  CfgNode* parameters = CfgFindChild(file->root, kParameters);
  for (const char16_t* branch : branches) {
    if (!EnsureContainer(parameters, branch)) {
      return false;
    }
  }
  CfgSave(file.get());
  return true;
}

// ---- The check at a sheet's start ---------------------------------------------------------------

VersionValue VersionOf(const CfgNode& node) {
  VersionValue value;
  CfgCopyValue(node, value);
  return value;
}

SettingsFileState Corrupt(ScopedCfg file) {
  World().files.DeleteFileW(file->path);
  file.reset();

  const ModuleHandle module = Process().CurrentLanguageModule;
  char16_t caption[128] = {};
  char16_t text[512] = {};
  if (!LoadExistingString(module, kStringFavorites, caption) ||
      !LoadExistingString(module, kStringSettingsFileDamaged, text)) {
    CopyText(caption, u"Config File");
    CopyText(text, u"File Corruption!");
  }
  ShowMessageBox(nullptr, text, caption, kMbIconError);
  return SettingsFileState::kCorrupt;
}

// Writes one record of an earlier file in the current form: through the context, and to the end of
// the favourites, also when it was the current record.
void Rewrite(const FavoriteRecord& record, UIContext& context) {
  const FavoriteStore favorites;
  Unpack(record, context);
  char16_t name[std::size(PrivateDevmode{}.FavoriteName) + 1];
  CopyText(name, FieldText(context.privatePointer->FavoriteName));
  favorites.Delete(name);
  favorites.Save(name, context);
}

enum class Migration { kGoOn, kEnd, kCorrupt };

// The favourites of an earlier file. Reading goes by the tree that was opened, writing by the file.
Migration MigrateFavorites(const ScopedCfg& file, const CfgNode* branch, UIContext& context) {
  const FavoriteStore favorites;
  NameList names;
  const int count = favorites.List(names);
  if (favorites.Count() != count) {
    return Migration::kCorrupt;
  }
  for (int i = 0; i < count; ++i) {
    FavoriteRecord record;
    const CfgNode* child = CfgFindChild(branch, names.rows[static_cast<std::size_t>(i)].data());
    if (!CopyValueOfLength(child, WritableBytesOf(record))) {
      CfgSave(file.get());  // the tree as it was opened: what was migrated so far is taken back
      return Migration::kEnd;
    }
    Rewrite(record, context);
  }
  return Migration::kGoOn;
}

Migration MigrateCurrent(const ScopedCfg& file, const CfgNode* parameters, UIContext& context) {
  const CfgNode* branch = CfgFindChild(parameters, kCurrent);
  if (branch == nullptr) {
    CfgSave(file.get());
    return Migration::kEnd;
  }
  FavoriteRecord record;
  if (CopyValueOfLength(branch->firstChild, WritableBytesOf(record))) {
    Rewrite(record, context);
  }
  return Migration::kGoOn;
}

Migration MigrateRecords(const ScopedCfg& file, UIContext& context) {
  const CfgNode* parameters = CfgFindChild(file->root, kParameters);
  if (parameters == nullptr) {
    return Migration::kGoOn;
  }
  if (const CfgNode* branch = CfgFindChild(parameters, kFavorites)) {
    const Migration favorites = MigrateFavorites(file, branch, context);
    if (favorites != Migration::kGoOn) {
      return favorites;
    }
  }
  return MigrateCurrent(file, parameters, context);
}

void WriteCurrentVersion() {
  const ScopedCfg file = OpenSettingsFile();
  if (file == nullptr) {
    return;
  }
  CfgNode* version = CfgFindChild(file->root, kVersionName);
  if (version != nullptr && (version->len != static_cast<std::int32_t>(kCurrentVersion.size()) ||
                             VersionOf(*version) != kCurrentVersion)) {
    CfgSetValue(*version, kCurrentVersion);
  }
  CfgSave(file.get());
}

}  // namespace

void GetSettingsFilePath(std::span<char16_t, kMaxPathUnits> path) {
  const OwnPlace place;
  Path maker;
  ReadConfigValue(maker, u"Print", u"OEM_NAME");
  if (maker.front() == u'\0') {
    CopyText(maker, u"Ostrel");
  }
  Path folder = {};
  TextBuilder text(path);
  if (World().shell.SHGetFolderPathW(kCsidlAppData | kCsidlFlagCreate, folder.data()) == 0) {
    // Folders that are there already, or can't be made, show when the file is opened.
    const auto makeFolder = [&] {
      if (text.fits()) {
        World().files.CreateDirectoryW(path.data());
      }
    };
    text.Add(FieldText(folder)).Add(u"\\").Add(FieldText(maker));
    makeFolder();
    text.Add(u"\\").Add(place.modulePrefix());
    makeFolder();
    text.Add(u"\\");
  }
  text.Add(place.modulePrefix()).Add(u"settings.dat");
  if (!text.fits()) {
    path.front() = u'\0';  // a path that was cut names another file
  }
  CopyText(Process().SettingsFilePath, FieldText(path));
}

bool InitSettingsFile() {
  constexpr const char16_t* kBranches[] = {kFavorites, kCurrent, kCustomPapers, kWatermarks};
  return InitBranches(kBranches);
}

void DeleteRememberedSettingsFile() {
  const auto& path = Process().SettingsFilePath;
  if (path[0] != u'\0') {
    World().files.DeleteFileW(path);
  }
}

SettingsFileState CheckSettingsFile(UIContext* context) {
  ScopedCfg file = OpenSettingsFile();
  if (file == nullptr) {
    return SettingsFileState::kUsable;
  }
  const CfgNode* version = CfgFindChild(file->root, kVersionName);
  if (version == nullptr) {
    return Corrupt(std::move(file));
  }
  const VersionValue found = VersionOf(*version);
  if (found > kCurrentVersion) {
    return Corrupt(std::move(file));
  }
  if (found == kCurrentVersion) {
    return SettingsFileState::kUsable;
  }
  switch (MigrateRecords(file, *context)) {
    case Migration::kCorrupt:
      return Corrupt(std::move(file));
    case Migration::kEnd:
      return SettingsFileState::kUsable;
    default:
      break;
  }
  file.reset();
  WriteCurrentVersion();
  return SettingsFileState::kUsable;
}

// ---- What all stores do -------------------------------------------------------------------------

bool SettingStore::Delete(const char16_t* name) const {
  const RecordName wanted(name);
  if (!wanted.accepted()) {
    return false;
  }
  const OpenBranch file(branch());
  return file && CfgDeleteChild(file.get(), wanted.get()) && file.Save();
}

int SettingStore::List(NameList& names, std::size_t capacity) const {
  return ListNames(OpenBranch(branch()).get(), names, capacity);
}

int SettingStore::Count() const {
  const OpenBranch file(branch());
  return file ? file.get()->childCount : 0;
}

bool SettingStore::SaveValue(const char16_t* name, std::span<const std::byte> value) const {
  const RecordName wanted(name);
  if (!wanted.accepted()) {
    return false;
  }
  const OpenBranch file(branch());
  if (!file) {
    return false;
  }
  CfgDeleteChild(file.get(), wanted.get());
  return file.AddAndSave(wanted.get(), value);
}

bool SettingStore::ReadValue(const char16_t* name, std::span<std::byte> value) const {
  const RecordName wanted(name);
  if (!wanted.accepted()) {
    return false;
  }
  const OpenBranch file(branch());
  return file && CopyValueOfLength(CfgFindChild(file.get(), wanted.get()), value);
}

// ---- Favourites ---------------------------------------------------------------------------------

bool FavoriteStore::Save(const char16_t* name, const UIContext& context) const {
  const RecordName wanted(name);
  return SaveValue(name, BytesOf(Pack(context, CallerText(wanted.get()))));
}

bool FavoriteStore::Read(const char16_t* name, UIContext* context) const {
  FavoriteRecord record;
  if (!ReadValue(name, WritableBytesOf(record))) {
    return false;
  }
  if (context != nullptr) {
    Unpack(record, *context);
  }
  return true;
}

bool FavoriteStore::SaveCurrent(const char16_t* name, const UIContext& context) const {
  const RecordName wanted(name);
  if (!wanted.accepted()) {
    return false;
  }
  const OpenBranch file(kCurrent);
  if (!file) {
    return false;
  }
  CfgDeleteLastChild(file.get());
  return file.AddAndSave(wanted.get(), BytesOf(Pack(context, CallerText(wanted.get()))));
}

bool FavoriteStore::Rename(const char16_t* newName, const char16_t* oldName,
                           UIContext& context) const {
  constexpr std::size_t kClearedBytes = 255;  // not the whole field; what is behind it stays
  const RecordName wanted(newName);
  if (!wanted.accepted()) {
    return false;
  }
  const OpenBranch file(branch());
  if (!file) {
    return false;
  }
  FavoriteRecord record = Pack(context, CallerText(wanted.get()));
  auto& favoriteName = record.privateDevmode.FavoriteName;
  std::memset(favoriteName, 0, kClearedBytes);
  CopyText(std::span(favoriteName).first(kStoreNameUnits), CallerText(wanted.get()));
  if (CfgReplaceNode(file.get(), wanted.get(), oldName, &record) == nullptr) {
    return false;
  }
  Unpack(record, context);
  return file.Save();
}

bool FavoriteStore::Init() const {
  constexpr const char16_t* kBranches[] = {kFavorites, kCurrent, kCustomPapers};
  return InitBranches(kBranches);
}

// ---- Custom papers and watermarks ---------------------------------------------------------------

bool CustomPaperStore::Save(const char16_t* name, const CustomPaperRecord& record) const {
  return SaveValue(name, BytesOf(record));
}

bool CustomPaperStore::Read(const char16_t* name, CustomPaperRecord& record) const {
  return ReadValue(name, WritableBytesOf(record));
}

bool WatermarkStore::Save(const char16_t* name, std::span<const std::byte> record) const {
  return SaveValue(name, record);
}

bool WatermarkStore::Read(const char16_t* name, std::span<std::byte> record) const {
  return ReadValue(name, record);
}

std::size_t ReadCustomPapers(std::span<CustomPaperRecord> records) {
  InitSettingsFile();
  std::size_t count = 0;
  CustomPaperRecord record = {};
  ForEachCustomPaper(record, [&](const CustomPaperRecord& found) {
    if (count < records.size()) {
      records[count++] = found;
    }
    return count < records.size();
  });
  return count;
}

bool FindCustomPaper(std::uint32_t paperId, CustomPaperRecord* record) {
  bool found = false;
  ForEachCustomPaper(*record, [&](const CustomPaperRecord& candidate) {
    found = candidate.PaperId == paperId;
    return !found;
  });
  return found;
}

std::int32_t NextCustomPaperId() {
  constexpr std::int32_t kTriedIds = 64;
  const CustomPaperStore store;
  const int count = store.Count();
  if (count >= store.MaxCount()) {
    return -1;
  }
  std::array<bool, kTriedIds> used = {};
  CustomPaperRecord record = {};
  ForEachCustomPaper(record, [&](const CustomPaperRecord& found) {
    const std::uint32_t place = found.PaperId - kFirstStoredPaperId;
    if (place < used.size()) {
      used[place] = true;
    }
    return true;
  });
  const auto free = std::ranges::find(used, false);
  return free == used.end() ? -1
                            : kFirstStoredPaperId + static_cast<std::int32_t>(free - used.begin());
}

}  // namespace ostrel
