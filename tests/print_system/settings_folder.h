// The settings file where the driver keeps it, made and read by a test itself: its bytes are put
// together here, without the driver's help.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::print_system {

// ---- The bytes of a settings file ---------------------------------------------------------------

// A leaf with a value, and a container of objects that are already in their written form.
std::string Leaf(std::string_view name, std::string_view type, std::string_view value);
std::string Container(std::string_view name, const std::vector<std::string>& children);

// The four branches of a settings file, each a list of leaves, below a version of eight bytes.
struct SettingsTree {
  std::string version = std::string("0.0.0.1\0", 8);
  std::vector<std::string> favorites = {};
  std::vector<std::string> current = {};
  std::vector<std::string> customPapers = {};
  std::vector<std::string> watermarks = {};

  std::string Bytes() const;
};

// A custom paper as a leaf of its branch.
struct CustomPaper {
  std::uint16_t width_px600;
  std::uint16_t length_px600;
  std::wstring name;
  std::uint32_t id;

  std::string Value() const;  // 72 bytes
};
std::string CustomPaperLeaf(std::string_view nodeName, const CustomPaper& paper);

// The value of the leaf at the end of these names, as it stands in a file's bytes. Empty when there
// is none, or when the bytes on the way there aren't in the form above.
std::optional<std::string> LeafValue(std::string_view bytes,
                                     const std::vector<std::string_view>& path);

// ---- Where it lies ------------------------------------------------------------------------------

// The user's folder for the data of applications.
std::wstring ApplicationData();

// A settings file below the application data: (maker)\ostrel\ostrelsettings.dat. What is there when
// the object is made is put back when it goes; a folder that wasn't there goes too.
class SettingsPlace {
 public:
  explicit SettingsPlace(const std::wstring& maker = L"Ostrel");
  ~SettingsPlace();
  SettingsPlace(const SettingsPlace&) = delete;
  SettingsPlace& operator=(const SettingsPlace&) = delete;

  const std::wstring& path() const { return path_; }
  const std::wstring& folder() const { return folder_; }

  // Makes the folders and the file.
  void Write(std::string_view bytes);
  void MakeFolders();
  // Without a value when there is no file.
  std::optional<std::string> Read() const;
  // Removes what stands at the path, a file or an empty folder.
  void Clear();

 private:
  std::wstring makerFolder_;
  std::wstring folder_;
  std::wstring path_;
  bool folderWasThere_;
  std::optional<std::string> before_;
};

}  // namespace ostrel::print_system
