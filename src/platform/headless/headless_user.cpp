// The files, the registry, the user and the shell of the in-memory platform.
#include "platform/headless/headless_platform.h"
#include "platform/headless/names.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace ostrel::headless {
namespace {

// The value of a key in a section of an ini file. Names are in lower case.
std::optional<std::u16string> ProfileValue(std::string_view text, const std::u16string& section,
                                           const std::u16string& key) {
  const auto widen = [](std::string_view line) { return std::u16string(line.begin(), line.end()); };
  bool inSection = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('[')) {
      inSection = LowerCase(widen(line)) == u'[' + section + u']';
    } else if (const std::size_t equals = line.find('=');
               inSection && equals != std::string_view::npos &&
               LowerCase(widen(line.substr(0, equals))) == key) {
      return widen(line.substr(equals + 1));
    }
  }
  return std::nullopt;
}

}  // namespace

HeadlessFiles::OpenFile* HeadlessFiles::Find(FileHandle file) {
  const auto found = open_.find(NumberOf(file));
  return found == open_.end() ? nullptr : &found->second;
}

bool HeadlessFiles::Fail(std::uint32_t code) {
  debug_.SetLastError(code);
  return false;
}

bool HeadlessFiles::IsDirectory(std::u16string_view path) const {
  const std::u16string key = LowerCase(path);
  const bool isDrive = key.size() == 2 && key.back() == u':';
  return isDrive || directories_.contains(key) ||
         std::ranges::any_of(
             files_, [&key](const auto& file) { return file.first.starts_with(key + u'\\'); });
}

bool HeadlessFiles::IsReadOnly(const std::u16string& key) const {
  return std::ranges::any_of(readOnly_, [&key](const std::u16string& path) {
    return key == path || key.starts_with(path + u'\\');
  });
}

void HeadlessFiles::Put(std::u16string_view path, Content content) {
  const std::u16string key = LowerCase(path);
  // The folders stay when the file goes.
  for (std::size_t end = key.find(u'\\'); end != key.npos; end = key.find(u'\\', end + 1)) {
    directories_.insert(key.substr(0, end));
  }
  files_[key] = std::make_shared<Content>(std::move(content));
}

const HeadlessFiles::Content* HeadlessFiles::Get(std::u16string_view path) const {
  const auto found = files_.find(LowerCase(path));
  return found == files_.end() ? nullptr : found->second.get();
}

void HeadlessFiles::MakeReadOnly(std::u16string_view path) {
  readOnly_.insert(LowerCase(path));
}

std::uint32_t HeadlessFiles::GetFileAttributesW(const char16_t* path) {
  constexpr std::uint32_t kNormal = 0x80;     // FILE_ATTRIBUTE_NORMAL
  constexpr std::uint32_t kDirectory = 0x10;  // FILE_ATTRIBUTE_DIRECTORY
  if (!faults_.ShouldFail("GetFileAttributesW")) {
    if (files_.contains(LowerCase(path))) {
      return kNormal;
    }
    if (IsDirectory(path)) {
      return kDirectory;
    }
  }
  Fail(kErrorFileNotFound);
  return kInvalidFileAttributes;
}

bool HeadlessFiles::FindFirstFileW(const char16_t* path) {
  if (!faults_.ShouldFail("FindFirstFileW") &&
      (files_.contains(LowerCase(path)) || IsDirectory(path))) {
    return true;
  }
  return Fail(kErrorFileNotFound);
}

FileHandle HeadlessFiles::CreateFileW(const char16_t* path, Access access) {
  const std::u16string key = LowerCase(path);
  const bool exists = files_.contains(key);
  const bool mustExist =
      access == Access::kOpenExistingForReading || access == Access::kOpenExistingForUpdate;
  const std::u16string folder = key.substr(0, std::min(key.rfind(u'\\'), key.size()));
  std::uint32_t error = kErrorSuccess;
  if (faults_.ShouldFail("CreateFileW") || IsDirectory(path) ||
      (access != Access::kOpenExistingForReading && IsReadOnly(key))) {
    error = kErrorAccessDenied;
  } else if (key.empty() || (!exists && folder != key && !IsDirectory(folder))) {
    error = kErrorPathNotFound;  // an empty path names no place at all
  } else if (mustExist && !exists) {
    error = kErrorFileNotFound;
  }
  if (error != kErrorSuccess) {
    Fail(error);
    return nullptr;
  }
  std::shared_ptr<Content>& content = files_[key];
  if (content == nullptr) {
    content = std::make_shared<Content>();
  }
  if (access == Access::kCreateAlwaysForWriting) {
    content->clear();
  }
  const std::uintptr_t handle = nextHandle_;
  nextHandle_ += 8;
  ++openings_;
  open_[handle] = {content, 0, access};
  return HandleOf<FileHandle>(handle);
}

bool HeadlessFiles::GetFileSizeEx(FileHandle file, std::uint64_t* sizeBytes) {
  *sizeBytes = 0;
  const OpenFile* open = Find(file);
  if (faults_.ShouldFail("GetFileSizeEx") || open == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  *sizeBytes = open->content->size();
  return true;
}

bool HeadlessFiles::ReadFile(FileHandle file, void* buffer, std::uint32_t sizeBytes,
                             std::uint32_t* readBytes) {
  *readBytes = 0;
  OpenFile* open = Find(file);
  if (faults_.ShouldFail("ReadFile") || open == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (open->access != Access::kOpenExistingForReading &&
      open->access != Access::kOpenExistingForUpdate) {
    return Fail(kErrorAccessDenied);
  }
  const std::size_t place = std::min(open->place, open->content->size());
  const std::size_t count = std::min<std::size_t>(open->content->size() - place, sizeBytes);
  std::copy_n(open->content->data() + place, count, static_cast<std::byte*>(buffer));
  open->place += count;
  *readBytes = static_cast<std::uint32_t>(count);
  return true;
}

bool HeadlessFiles::WriteFile(FileHandle file, const void* data, std::uint32_t sizeBytes,
                              std::uint32_t* writtenBytes) {
  *writtenBytes = 0;
  OpenFile* open = Find(file);
  if (faults_.ShouldFail("WriteFile") || open == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (open->access == Access::kOpenExistingForReading) {
    return Fail(kErrorAccessDenied);
  }
  if (open->access == Access::kOpenAlwaysForAppending) {
    open->place = open->content->size();  // wherever others have moved the end to
  }
  const std::size_t count = std::min<std::size_t>(sizeBytes, freeBytes.value_or(sizeBytes));
  const auto* bytes = static_cast<const std::byte*>(data);
  open->content->resize(std::max(open->content->size(), open->place + count));
  std::copy_n(bytes, count, open->content->begin() + static_cast<std::ptrdiff_t>(open->place));
  open->place += count;
  if (freeBytes) {
    *freeBytes -= count;
  }
  *writtenBytes = static_cast<std::uint32_t>(count);
  return count == sizeBytes || Fail(kErrorDiskFull);
}

bool HeadlessFiles::SetEndOfFile(FileHandle file) {
  OpenFile* open = Find(file);
  if (faults_.ShouldFail("SetEndOfFile") || open == nullptr) {
    return Fail(kErrorInvalidHandle);
  }
  if (open->access == Access::kOpenExistingForReading) {
    return Fail(kErrorAccessDenied);
  }
  open->content->resize(open->place);
  return true;
}

bool HeadlessFiles::CloseHandle(FileHandle file) {
  return open_.erase(NumberOf(file)) != 0 || Fail(kErrorInvalidHandle);
}

bool HeadlessFiles::DeleteFileW(const char16_t* path) {
  const std::u16string key = LowerCase(path);
  if (faults_.ShouldFail("DeleteFileW") || IsReadOnly(key)) {
    return Fail(kErrorAccessDenied);
  }
  return files_.erase(key) != 0 || Fail(kErrorFileNotFound);
}

bool HeadlessFiles::CreateDirectoryW(const char16_t* path) {
  const std::u16string key = LowerCase(path);
  if (faults_.ShouldFail("CreateDirectoryW") || IsReadOnly(key)) {
    return Fail(kErrorAccessDenied);
  }
  if (files_.contains(key) || IsDirectory(path)) {
    return Fail(kErrorAlreadyExists);
  }
  directories_.insert(key);
  return true;
}

std::uint32_t HeadlessFiles::GetPrivateProfileStringW(const char16_t* section, const char16_t* key,
                                                      const char16_t* fallback, char16_t* buffer,
                                                      std::uint32_t units, const char16_t* path) {
  std::u16string value = fallback;
  // The platform takes doubled separators for one.
  std::u16string single;
  for (const char16_t unit : LowerCase(path)) {
    if (unit != u'\\' || !single.ends_with(u'\\')) {
      single += unit;
    }
  }
  if (const auto file = files_.find(single);
      !faults_.ShouldFail("GetPrivateProfileStringW") && file != files_.end()) {
    const auto& bytes = *file->second;
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    value = ProfileValue(text, LowerCase(section), LowerCase(key)).value_or(value);
  }
  if (units == 0) {
    return 0;
  }
  const std::size_t copied = std::min<std::size_t>(value.size(), units - 1);
  std::copy_n(value.data(), copied, buffer);
  buffer[copied] = u'\0';
  return static_cast<std::uint32_t>(copied);
}

// ---- Registry -----------------------------------------------------------------------------------

StoredValue StoredValue::Dword(std::uint32_t number) {
  const auto bytes = std::as_bytes(std::span(&number, 1));
  return {kRegDword, {bytes.begin(), bytes.end()}};
}

StoredValue StoredValue::Text(std::u16string_view text) {
  const std::u16string terminated(text);
  const auto bytes = std::as_bytes(std::span(terminated.c_str(), terminated.size() + 1));
  return {kRegSz, {bytes.begin(), bytes.end()}};
}

StoredValues& HeadlessRegistry::Values(std::u16string_view path) {
  return keys_[LowerCase(path)];
}

bool HeadlessRegistry::Has(std::u16string_view path) const {
  return keys_.contains(LowerCase(path));
}

StoredValues* HeadlessRegistry::Find(RegistryKey key) {
  const auto found = open_.find(NumberOf(key));
  return found == open_.end() ? nullptr : found->second;
}

std::uint32_t HeadlessRegistry::RegCreateKeyExW(const char16_t* path, RegistryKey* key) {
  *key = nullptr;
  if (faults_.ShouldFail("RegCreateKeyExW")) {
    return kErrorAccessDenied;
  }
  const std::uintptr_t handle = nextHandle_;
  nextHandle_ += 8;
  open_[handle] = &Values(path);
  *key = HandleOf<RegistryKey>(handle);
  return kErrorSuccess;
}

std::uint32_t HeadlessRegistry::RegQueryValueExW(RegistryKey key, const char16_t* name,
                                                 std::uint32_t* type, void* data,
                                                 std::uint32_t* sizeBytes) {
  const StoredValues* values = Find(key);
  if (faults_.ShouldFail("RegQueryValueExW") || values == nullptr) {
    return kErrorInvalidHandle;
  }
  const auto value = values->find(LowerCase(name));
  if (value == values->end()) {
    return kErrorFileNotFound;
  }
  const std::vector<std::byte>& bytes = value->second.bytes;
  const std::uint32_t room = *sizeBytes;
  *type = value->second.type;
  *sizeBytes = static_cast<std::uint32_t>(bytes.size());
  if (data != nullptr && room < bytes.size()) {
    return kErrorMoreData;
  }
  if (data != nullptr) {
    std::copy(bytes.begin(), bytes.end(), static_cast<std::byte*>(data));
  }
  return kErrorSuccess;
}

std::uint32_t HeadlessRegistry::RegSetValueExW(RegistryKey key, const char16_t* name,
                                               std::uint32_t type, const void* data,
                                               std::uint32_t sizeBytes) {
  StoredValues* values = Find(key);
  if (faults_.ShouldFail("RegSetValueExW") || values == nullptr) {
    return kErrorInvalidHandle;
  }
  const auto* bytes = static_cast<const std::byte*>(data);
  (*values)[LowerCase(name)] = {type, {bytes, bytes + sizeBytes}};
  return kErrorSuccess;
}

std::uint32_t HeadlessRegistry::RegCloseKey(RegistryKey key) {
  return open_.erase(NumberOf(key)) != 0 ? kErrorSuccess : kErrorInvalidHandle;
}

// ---- Security -----------------------------------------------------------------------------------

bool HeadlessSecurity::OpenProcessToken(TokenHandle* token) {
  *token = nullptr;
  if (faults_.ShouldFail("OpenProcessToken")) {
    debug_.SetLastError(kErrorAccessDenied);
    return false;
  }
  ++openTokens_;
  *token = HandleOf<TokenHandle>(0x4000);
  return true;
}

bool HeadlessSecurity::AnswerToken(const void* answer, std::size_t answerBytes, void* buffer,
                                   std::uint32_t sizeBytes, std::uint32_t* neededBytes) {
  *neededBytes = static_cast<std::uint32_t>(answerBytes);
  if (sizeBytes < answerBytes) {
    debug_.SetLastError(kErrorInsufficientBuffer);
    return false;
  }
  std::memcpy(buffer, answer, answerBytes);
  return true;
}

bool HeadlessSecurity::GetTokenInformation(TokenHandle token, std::uint32_t informationClass,
                                           void* buffer, std::uint32_t sizeBytes,
                                           std::uint32_t* neededBytes) {
  *neededBytes = sizeof(TokenUser);
  if (faults_.ShouldFail("GetTokenInformation") || token == nullptr ||
      (informationClass != kTokenUser && informationClass != kTokenGroups)) {
    debug_.SetLastError(kErrorInvalidHandle);
    return false;
  }
  if (informationClass == kTokenUser) {
    const TokenUser user = {userSid.data(), 0};
    return AnswerToken(&user, sizeof(user), buffer, sizeBytes, neededBytes);
  }
  const std::size_t rowsPlace = offsetof(TokenGroups, Groups);
  std::vector<std::byte> answer(rowsPlace + groups.size() * sizeof(TokenUser));
  const auto count = static_cast<std::uint32_t>(groups.size());
  std::memcpy(answer.data(), &count, sizeof(count));
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const TokenUser row = {groups[i].sid.data(), groups[i].attributes};
    std::memcpy(answer.data() + rowsPlace + i * sizeof(row), &row, sizeof(row));
  }
  return AnswerToken(answer.data(), answer.size(), buffer, sizeBytes, neededBytes);
}

bool HeadlessSecurity::CloseHandle(TokenHandle token) {
  if (token == nullptr || openTokens_ == 0) {
    return false;
  }
  --openTokens_;
  return true;
}

// A SID is told apart by the place of its text.
const std::u16string* HeadlessSecurity::FindSid(const void* sid) const {
  if (sid == userSid.data()) {
    return &userSid;
  }
  const auto group = std::ranges::find_if(
      groups, [sid](const Group& candidate) { return candidate.sid.data() == sid; });
  return group == groups.end() ? nullptr : &group->sid;
}

bool HeadlessSecurity::ConvertSidToStringSidW(void* sid, char16_t** text) {
  *text = nullptr;
  const std::u16string* found = FindSid(sid);
  if (faults_.ShouldFail("ConvertSidToStringSidW") || found == nullptr) {
    debug_.SetLastError(kErrorInvalidParameter);
    return false;
  }
  *text = new char16_t[found->size() + 1]();
  std::copy(found->begin(), found->end(), *text);
  ++liveTexts_;
  return true;
}

void HeadlessSecurity::LocalFree(void* block) {
  if (block != nullptr) {
    delete[] static_cast<char16_t*>(block);
    --liveTexts_;
  }
}

bool HeadlessSecurity::GetUserNameW(char16_t* buffer, std::uint32_t* units) {
  const auto needed = static_cast<std::uint32_t>(userName.size() + 1);
  if (faults_.ShouldFail("GetUserNameW") || *units < needed) {
    *units = needed;
    debug_.SetLastError(kErrorInsufficientBuffer);
    return false;
  }
  std::copy_n(userName.c_str(), needed, buffer);
  *units = needed;
  return true;
}

// ---- Shell -------------------------------------------------------------------------------------

std::uint32_t HeadlessShell::SHGetFolderPathW(std::uint32_t folder, char16_t* path) {
  constexpr std::uint32_t kFail = 0x80004005;  // E_FAIL
  path[0] = u'\0';
  const std::uint32_t which = folder & ~kCsidlFlagCreate;
  if (faults_.ShouldFail("SHGetFolderPathW") || (which != kCsidlAppData && which != kCsidlSystem)) {
    return kFail;
  }
  const std::u16string& found = which == kCsidlAppData ? applicationData : systemFolder;
  std::copy_n(found.c_str(), std::min(found.size() + 1, kMaxPathUnits), path);
  return 0;
}

bool HeadlessShell::ShellExecuteW(const char16_t* verb, const char16_t* file,
                                  const char16_t* parameters, std::int32_t showCommand) {
  if (faults_.ShouldFail("ShellExecuteW")) {
    return false;
  }
  started.push_back({.verb = verb == nullptr ? std::nullopt : std::optional<std::u16string>(verb),
                     .file = file,
                     .parameters = parameters,
                     .showCommand = showCommand});
  return true;
}

WindowHandle HeadlessShell::HtmlHelpW(WindowHandle window, const char16_t* file,
                                      std::uint32_t command, std::uintptr_t data) {
  if (faults_.ShouldFail("HtmlHelpW")) {
    return nullptr;
  }
  help.push_back({window, file, command, data});
  return HandleOf<WindowHandle>(0x5000);
}

}  // namespace ostrel::headless
