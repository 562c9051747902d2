#include "settings_folder.h"

#include "print_system_setup.h"

#include <windows.h>
#include <shlobj.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace ostrel::print_system {
namespace {

std::string OpenTag(std::string_view name, std::string_view type, std::size_t valueBytes,
                    std::size_t children) {
  return "<object:" + std::string(name) + ",type:" + std::string(type) +
         ",len:" + std::to_string(valueBytes) + ",childobjs:" + std::to_string(children) + ">";
}

constexpr std::string_view kCloseTag = "<endobj>\n";

class File {
 public:
  File(const std::wstring& path, DWORD access, DWORD disposition)
      : handle_(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~File() {
    if (good()) {
      CloseHandle(handle_);
    }
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  bool good() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

}  // namespace

// ---- Bytes --------------------------------------------------------------------------------------

std::string Leaf(std::string_view name, std::string_view type, std::string_view value) {
  return OpenTag(name, type, value.size(), 0) + (value.empty() ? "\n" : "") + std::string(value) +
         std::string(kCloseTag);
}

std::string Container(std::string_view name, const std::vector<std::string>& children) {
  std::string text = OpenTag(name, "null", 0, children.size()) + "\n";
  for (const std::string& child : children) {
    text += child;
  }
  return text + std::string(kCloseTag);
}

std::string SettingsTree::Bytes() const {
  return Container("cfgobj", {Leaf("version", "string", version),
                              Container("UIParam", {Container("savesetting", favorites),
                                                    Container("cursetting", current),
                                                    Container("cuspapersetting", customPapers),
                                                    Container("watermarksetting", watermarks)})});
}

std::string CustomPaper::Value() const {
  constexpr std::size_t kBytes = 72;
  constexpr std::size_t kNameUnits = 26;
  constexpr std::uint32_t kMillimetres = 1;
  std::string value(kBytes, '\0');
  const auto put = [&value](std::size_t offset, const auto& number) {
    std::memcpy(&value[offset], &number, sizeof(number));
  };
  put(0, width_px600);
  put(2, length_px600);
  std::memcpy(&value[4], name.data(), std::min(name.size(), kNameUnits) * sizeof(wchar_t));
  put(56, id);
  put(60, kMillimetres);
  put(64, static_cast<float>(width_px600));
  put(68, static_cast<float>(length_px600));
  return value;
}

std::string CustomPaperLeaf(std::string_view nodeName, const CustomPaper& paper) {
  return Leaf(nodeName, "binary", paper.Value());
}

namespace {

// Reads objects off the front of a text; each function answers whether the text was in their form.
class ObjectReader {
 public:
  explicit ObjectReader(std::string_view text) : rest_(text) {}

  bool Open() {
    valueBytes_ = 0;
    return Take("<object:") && TakeUntil(",type:", name_) && TakeUntil(",len:", type_) &&
           TakeNumber(",childobjs:", valueBytes_) && TakeNumber(">", children_) &&
           (valueBytes_ > 0 || Take("\n")) && TakeValue();
  }
  bool Close() { return Take(kCloseTag); }

  // What was opened, with all that it holds.
  bool Skip() {
    for (std::size_t left = children_; left > 0; --left) {
      if (!Open() || !Skip()) {
        return false;
      }
    }
    return Close();
  }

  std::string_view name() const { return name_; }
  std::string_view value() const { return value_; }
  std::size_t children() const { return children_; }

 private:
  bool Take(std::string_view text) {
    const bool there = rest_.starts_with(text);
    rest_.remove_prefix(there ? text.size() : 0);
    return there;
  }
  bool TakeUntil(std::string_view end, std::string_view& taken) {
    const std::size_t place = rest_.find(end);
    if (place == std::string_view::npos) {
      return false;
    }
    taken = rest_.substr(0, place);
    rest_.remove_prefix(place + end.size());
    return true;
  }
  bool TakeNumber(std::string_view end, std::size_t& number) {
    std::string_view digits;
    if (!TakeUntil(end, digits)) {
      return false;
    }
    const auto [stop, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() && stop == digits.data() + digits.size();
  }
  bool TakeValue() {
    if (rest_.size() < valueBytes_) {
      return false;
    }
    value_ = rest_.substr(0, valueBytes_);
    rest_.remove_prefix(valueBytes_);
    return true;
  }

  std::string_view rest_;
  std::string_view name_;
  std::string_view type_;
  std::string_view value_;
  std::size_t valueBytes_ = 0;
  std::size_t children_ = 0;
};

}  // namespace

std::optional<std::string> LeafValue(std::string_view bytes,
                                     const std::vector<std::string_view>& path) {
  ObjectReader reader(bytes);
  std::size_t siblings = 1;
  for (const std::string_view name : path) {
    bool found = false;
    for (; siblings > 0 && !found; --siblings) {
      if (!reader.Open()) {
        return std::nullopt;
      }
      found = reader.name() == name;
      if (!found && !reader.Skip()) {
        return std::nullopt;
      }
    }
    if (!found) {
      return std::nullopt;
    }
    siblings = reader.children();
  }
  return std::string(reader.value());
}

// ---- Place --------------------------------------------------------------------------------------

std::wstring ApplicationData() {
  wchar_t path[MAX_PATH] = {};
  if (SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                       path) != S_OK) {
    ThrowLastError("SHGetFolderPathW");
  }
  return path;
}

SettingsPlace::SettingsPlace(const std::wstring& maker)
    : makerFolder_(ApplicationData() + L"\\" + maker),
      folder_(makerFolder_ + L"\\ostrel"),
      path_(folder_ + L"\\ostrelsettings.dat"),
      folderWasThere_(GetFileAttributesW(makerFolder_.c_str()) != INVALID_FILE_ATTRIBUTES),
      before_(Read()) {}

SettingsPlace::~SettingsPlace() {
  Clear();
  if (before_) {
    Write(*before_);
  }
  if (!folderWasThere_) {
    RemoveDirectoryW(folder_.c_str());
    RemoveDirectoryW(makerFolder_.c_str());
  }
}

void SettingsPlace::MakeFolders() {
  CreateDirectoryW(makerFolder_.c_str(), nullptr);
  CreateDirectoryW(folder_.c_str(), nullptr);
}

void SettingsPlace::Write(std::string_view bytes) {
  MakeFolders();
  const File file(path_, GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  if (!file.good() || WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()),
                                &written, nullptr) == FALSE) {
    ThrowLastError("writing a settings file");
  }
}

std::optional<std::string> SettingsPlace::Read() const {
  const File file(path_, GENERIC_READ, OPEN_EXISTING);
  if (!file.good()) {
    return std::nullopt;
  }
  std::string bytes(GetFileSize(file.get(), nullptr), '\0');
  DWORD read = 0;
  ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  bytes.resize(read);
  return bytes;
}

void SettingsPlace::Clear() {
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(path_.c_str());
  RemoveDirectoryW(path_.c_str());
}

}  // namespace ostrel::print_system
