// The three stores of the user's named records: favourites, custom papers and watermarks.
//
// All of them live in one config tree file for each user and driver, the settings file:
//
//   cfgobj
//     version            "0.0.0.1" and a NUL
//     UIParam
//       savesetting        one child for each favourite
//       cursetting         at most one child, a favourite
//       cuspapersetting    one child for each custom paper
//       watermarksetting   one child for each watermark
//
// A store holds nothing: each operation opens the file, changes the tree and writes the whole file
// back. Records are found by name alone, exactly as spelled, and their order is that of the file: a
// record that is saved goes to the end. A name of more than 32 units is refused before the file is
// touched; one of 32 is cut to 31.
//
// A branch that is missing is an error and isn't repaired: only Init makes branches.
#pragma once

#include "config/cfg_file.h"
#include "core/settings_record.h"
#include "platform/print_types.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ostrel {

struct UIContext;

inline constexpr int kMaxStoredRecords = 16;
inline constexpr std::size_t kStoreNameUnits = 32;   // of a working copy, with its terminator
inline constexpr std::size_t kMaxCustomPapers = 20;  // rows that a list of papers has room for
inline constexpr std::int32_t kFirstStoredPaperId = 288;

// A favourite as the file keeps it: the private part first, the reverse of the live record's order.
struct FavoriteRecord {
  PrivateDevmode privateDevmode;  // offset 0
  PublicDevmode publicDevmode;    // 7676
  char16_t Name[256];             // 7896; read by nothing: FavoriteName in the private part counts
};
static_assert(sizeof(FavoriteRecord) == 8408);
static_assert(offsetof(FavoriteRecord, privateDevmode) == 0);
static_assert(offsetof(FavoriteRecord, publicDevmode) == 7676);
static_assert(offsetof(FavoriteRecord, Name) == 7896);
static_assert(sizeof(FavoriteRecord) == kCfgReplacedValueBytes);

// A user's paper size as the file keeps it, 72 bytes, little-endian.
struct CustomPaperRecord {
  std::uint16_t Width;    // offset 0; pixels at 600 dpi
  std::uint16_t Length;   // 2; pixels at 600 dpi
  char16_t Name[26];      // 4; 24 characters with terminator in practice
  std::uint32_t PaperId;  // 56; 288 and up
  std::uint32_t Unit;     // 60; 1 millimetres, 2 inches
  float ExactWidth;       // 64; pixels, unrounded
  float ExactLength;      // 68; pixels, unrounded
};
static_assert(sizeof(CustomPaperRecord) == 72);
static_assert(offsetof(CustomPaperRecord, Width) == 0);
static_assert(offsetof(CustomPaperRecord, Length) == 2);
static_assert(offsetof(CustomPaperRecord, Name) == 4);
static_assert(offsetof(CustomPaperRecord, PaperId) == 56);
static_assert(offsetof(CustomPaperRecord, Unit) == 60);
static_assert(offsetof(CustomPaperRecord, ExactWidth) == 64);
static_assert(offsetof(CustomPaperRecord, ExactLength) == 68);

// The buffer that lists are read into: 32 names of 64 units, whatever the store.
struct NameList {
  static constexpr std::size_t kRows = 32;
  static constexpr std::size_t kRowUnits = 64;
  std::array<std::array<char16_t, kRowUnits>, kRows> rows = {};
};

// Puts the settings file's path together, makes its folders as far as it can, and remembers the
// path for the process: (application data)\(maker)\(prefix)\(prefix)settings.dat, the prefix
// standing twice by design. Without an application data folder it is the bare file name.
void GetSettingsFilePath(std::span<char16_t, kMaxPathUnits> path);

// Makes the settings file and its branches, whatever is missing of them. A file without a version
// is replaced, with all that it held. Every place that is about to use a store calls this first.
// Result: false when the file can't be opened or a branch can't be made. A file that then can't be
// written counts as made.
bool InitSettingsFile();

// Deletes the settings file at the path that was put together last; nothing when none was.
void DeleteRememberedSettingsFile();

// The check when a document sheet opens.
enum class SettingsFileState {
  kUsable,   // of this version, or brought to it, or not there at all
  kCorrupt,  // deleted, and the user told; the sheet can't be shown
};
// A file of an earlier version is migrated through the context's record.
SettingsFileState CheckSettingsFile(UIContext* context);

class SettingStore {
 public:
  SettingStore() = default;
  virtual ~SettingStore() = default;
  SettingStore(const SettingStore&) = delete;
  SettingStore& operator=(const SettingStore&) = delete;

  // Removes a record. Result: false, with the file as it was, when there is none of that name.
  virtual bool Delete(const char16_t* name) const;
  // Writes the names in file order, at most `capacity` of them. Result: how many were written.
  virtual int List(NameList& names, std::size_t capacity = NameList::kRows) const;
  // Makes the file and the branches that this store is responsible for.
  virtual bool Init() const { return InitSettingsFile(); }
  // How many records the branch announces; a damaged file may announce any number.
  virtual int Count() const;
  virtual int MaxCount() const { return kMaxStoredRecords; }

 protected:
  // The name of the branch under "UIParam".
  virtual const char16_t* branch() const = 0;

  bool SaveValue(const char16_t* name, std::span<const std::byte> value) const;
  // Reads a value of exactly this length.
  bool ReadValue(const char16_t* name, std::span<std::byte> value) const;
};

class FavoriteStore final : public SettingStore {
 public:
  // Saves the context's record. A favourite that is saved again moves to the end.
  bool Save(const char16_t* name, const UIContext& context) const;
  // Reads a favourite into the context's own record, exactly as stored. Without a context it only
  // tells whether there is one.
  bool Read(const char16_t* name, UIContext* context) const;
  // Makes the context's record the one of "cursetting".
  bool SaveCurrent(const char16_t* name, const UIContext& context) const;
  // Renames a favourite in its place and saves the context's record in it, which takes the new
  // name.
  bool Rename(const char16_t* newName, const char16_t* oldName, UIContext& context) const;
  // Makes all branches but "watermarksetting".
  bool Init() const override;

 protected:
  const char16_t* branch() const override { return u"savesetting"; }
};

class CustomPaperStore final : public SettingStore {
 public:
  bool Save(const char16_t* name, const CustomPaperRecord& record) const;
  bool Read(const char16_t* name, CustomPaperRecord& record) const;

 protected:
  const char16_t* branch() const override { return u"cuspapersetting"; }
};

class WatermarkStore final : public SettingStore {
 public:
  bool Save(const char16_t* name, std::span<const std::byte> record) const;
  bool Read(const char16_t* name, std::span<std::byte> record) const;

 protected:
  const char16_t* branch() const override { return u"watermarksetting"; }
};

// Reads the stored custom papers in store order, passing over those that can't be read. Makes the
// settings file first if need be. Result: how many were written to `records`.
std::size_t ReadCustomPapers(std::span<CustomPaperRecord> records);

// Finds the first stored custom paper with this id, in the file as it is. Result: whether there is
// one; the record holds what was read last even if there is none.
bool FindCustomPaper(std::uint32_t paperId, CustomPaperRecord* record);

// The lowest free id for a new custom paper; 288 for an empty store, -1 for a full one.
std::int32_t NextCustomPaperId();

}  // namespace ostrel
