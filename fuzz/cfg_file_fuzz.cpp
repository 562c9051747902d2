// Any bytes as a config tree file: read, changed by operations of the input's choice, saved, read
// again and compared with the tree that was saved.
//
// The input: a byte of choices, the number of the allocation that fails (0 for none), the number of
// operations (up to 15), four bytes for each (operation, object, name, value), and the file.
#include "caller_record.h"
#include "config/cfg_file.h"
#include "config/utf8.h"
#include "support/test_world.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrel;
using fuzz::Require;

constexpr char16_t kPath[] = u"C:\\settings.dat";
constexpr std::size_t kSlackBytes = 32;

// Longer runs find nothing more and cost time.
constexpr std::size_t kMostSteps = 16;

// Announced and missing bytes are written as zeros. What is between these two bounds is saved as
// well, but only costs time.
constexpr std::uint64_t kMissingBytesSaved = 1 << 12;
constexpr std::uint64_t kMissingBytesRefused = 64 << 20;

// The plain heap, so that the sanitizers see every block as it is.
class CountingMemory final : public Memory {
 public:
  void* HeapAlloc(std::size_t sizeBytes) override {
    largest = std::max(largest, sizeBytes);
    if (failingCall != 0 && --failingCall == 0) {
      return nullptr;
    }
    ++live;
    return std::calloc(1, sizeBytes);
  }
  void HeapFree(void* block) override {
    if (block != nullptr) {
      --live;
      std::free(block);
    }
  }

  std::size_t failingCall = 0;
  std::size_t live = 0;
  std::size_t largest = 0;
};

// One file, always there.
class OneFile final : public Files {
 public:
  std::uint32_t GetFileAttributesW(const char16_t* /*path*/) override { return 0x80; }
  bool FindFirstFileW(const char16_t* /*path*/) override { return true; }
  FileHandle CreateFileW(const char16_t* /*path*/, Access access) override {
    if (access == Access::kCreateAlwaysForWriting) {
      content.clear();
    }
    place_ = 0;
    ++open;
    return reinterpret_cast<FileHandle>(this);
  }
  bool GetFileSizeEx(FileHandle /*file*/, std::uint64_t* sizeBytes) override {
    *sizeBytes = content.size();
    return tellsSize;
  }
  bool ReadFile(FileHandle /*file*/, void* buffer, std::uint32_t sizeBytes,
                std::uint32_t* readBytes) override {
    const std::size_t count =
        std::min({content.size() - place_, std::size_t{sizeBytes}, mostReadAtOnce});
    std::copy_n(content.data() + place_, count, static_cast<std::uint8_t*>(buffer));
    place_ += count;
    *readBytes = static_cast<std::uint32_t>(count);
    return true;
  }
  bool WriteFile(FileHandle /*file*/, const void* data, std::uint32_t sizeBytes,
                 std::uint32_t* writtenBytes) override {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    content.insert(content.end(), bytes, bytes + sizeBytes);
    place_ = content.size();
    *writtenBytes = sizeBytes;
    return true;
  }
  bool SetEndOfFile(FileHandle /*file*/) override {
    content.resize(place_);
    return true;
  }
  bool CloseHandle(FileHandle /*file*/) override {
    --open;
    return true;
  }
  bool DeleteFileW(const char16_t* /*path*/) override { return false; }
  bool CreateDirectoryW(const char16_t* /*path*/) override { return false; }
  std::uint32_t GetPrivateProfileStringW(const char16_t* /*section*/, const char16_t* /*key*/,
                                         const char16_t* /*fallback*/, char16_t* /*buffer*/,
                                         std::uint32_t /*units*/,
                                         const char16_t* /*path*/) override {
    return 0;
  }

  std::vector<std::uint8_t> content;
  bool tellsSize = true;
  std::size_t mostReadAtOnce = SIZE_MAX;
  std::size_t open = 0;

 private:
  std::size_t place_ = 0;
};

struct Scene {
  Scene() { world.process.platform = &lists; }

  test::TestWorld world;
  CountingMemory memory;
  OneFile files;
  Platform lists{world.platform.print,
                 world.platform.locale,
                 world.platform.modules,
                 files,
                 world.platform.registry,
                 world.platform.security,
                 world.platform.shell,
                 world.platform.windows,
                 world.platform.graphics,
                 world.platform.system,
                 memory,
                 world.platform.debug};
};

// ---- The tree ----------------------------------------------------------------------------------

// The objects depth first, parents before their children.
std::vector<CfgNode*> ObjectsOf(CfgNode* root) {
  std::vector<CfgNode*> objects;
  std::vector<CfgNode*> waiting = {root};
  while (!waiting.empty()) {
    CfgNode* node = waiting.back();
    waiting.pop_back();
    if (node == nullptr) {
      continue;
    }
    objects.push_back(node);
    const auto first = waiting.end() - waiting.begin();
    for (CfgNode* child = node->firstChild; child != nullptr; child = child->nextSibling) {
      waiting.push_back(child);
    }
    std::reverse(waiting.begin() + first, waiting.end());
  }
  return objects;
}

void CheckTree(CfgNode* root) {
  Require(root == nullptr || (root->parent == nullptr && root->nextSibling == nullptr),
          "the root hangs nowhere");
  for (const CfgNode* node : ObjectsOf(root)) {
    Require(std::memchr(node->name, 0, sizeof(node->name)) != nullptr, "a name is terminated");
    Require(std::memchr(node->type, 0, sizeof(node->type)) != nullptr, "a type is terminated");
    Require(node->storedBytes == 0 || std::int64_t{node->storedBytes} <= node->len,
            "no more is stored than announced");
    for (std::size_t i = 0; node->value != nullptr && i < kSlackBytes; ++i) {
      Require(node->value[node->storedBytes + i] == std::byte{0}, "zeros follow a value");
    }
    const CfgNode* last = nullptr;
    for (const CfgNode* child = node->firstChild; child != nullptr; child = child->nextSibling) {
      Require(child->parent == node, "a child knows its parent");
      last = child;
    }
    Require(node->lastChild == last, "the last child is known");
  }
}

std::vector<std::byte> ValueOf(const CfgNode& node) {
  std::vector<std::byte> value(node.len > 0 ? static_cast<std::size_t>(node.len) : 0);
  CfgCopyValue(node, value);
  return value;
}

std::uint64_t MissingBytes(CfgNode* root) {
  std::uint64_t missing = 0;
  for (const CfgNode* node : ObjectsOf(root)) {
    missing += node->len > 0 ? static_cast<std::uint32_t>(node->len) - node->storedBytes : 0U;
  }
  return missing;
}

// ---- What a file must hold ---------------------------------------------------------------------

std::string TagOf(const CfgNode& node) {
  return std::string("object:") + node.name + ",type:" + node.type +
         ",len:" + std::to_string(node.len) + ",childobjs:" + std::to_string(node.childCount);
}

bool IsWritten(const CfgNode& node) {
  const std::size_t lineFeed = node.len < 1 ? 1 : 0;
  return TagOf(node).size() + 2 + lineFeed < kCfgTagBytes;
}

// Whether a reader finds the same fields in the tag: nothing ends it, its name or its type early.
bool ReadsBack(const CfgNode& node) {
  const std::string tag = TagOf(node);
  for (std::size_t i = tag.find('>'); i != std::string::npos; i = tag.find('>', i + 1)) {
    const std::string_view before = std::string_view(tag).substr(0, i);
    if (before.find("childobjs") != std::string_view::npos ||
        before.find("endobj") != std::string_view::npos) {
      return false;
    }
  }
  const std::string_view type = node.type;
  return std::string_view(node.name).find(",type") == std::string_view::npos &&
         (type.find(',') == std::string_view::npos ||
          type.find_first_not_of(',') == std::string_view::npos) &&
         (node.len < 1 || node.childCount < 1);
}

// One line for each object that is written. Result: false when one of them doesn't read back.
bool Describe(const CfgNode* node, int depth, std::vector<std::string>& lines) {
  if (!IsWritten(*node)) {
    return true;
  }
  bool good = ReadsBack(*node);
  std::string line = std::to_string(depth) + TagOf(*node) + '>';
  if (node->childCount < 1) {
    const std::vector<std::byte> value = ValueOf(*node);
    line.append(reinterpret_cast<const char*>(value.data()), value.size());
  }
  lines.push_back(std::move(line));
  const CfgNode* child = node->childCount < 1 ? nullptr : node->firstChild;
  for (; child != nullptr; child = child->nextSibling) {
    good = Describe(child, depth + 1, lines) && good;
  }
  return good;
}

void SaveAndReadAgain(Scene& scene, CfgHandle* handle) {
  const std::uint64_t missing = MissingBytes(handle->root);
  if (missing > kMissingBytesSaved && missing <= kMissingBytesRefused) {
    return;
  }
  const std::vector<std::uint8_t> before = scene.files.content;
  const bool faulty = scene.memory.failingCall != 0;
  if (!CfgSave(handle)) {
    Require(faulty || handle->root == nullptr || missing > kMissingBytesRefused,
            "a tree is saved when there is memory");
    Require(scene.files.content == before, "a save that fails leaves the file");
    return;
  }
  Require(handle->root != nullptr && missing <= kMissingBytesRefused, "there was a tree to save");
  std::vector<std::string> saved;
  if (!Describe(handle->root, 0, saved) || scene.memory.failingCall != 0) {
    CfgClose(CfgOpen(kPath));
    return;
  }
  CfgHandle* again = CfgOpen(kPath);
  Require(again != nullptr, "what was saved can be read");
  CheckTree(again->root);
  std::vector<std::string> read;
  Require((again->root == nullptr) == saved.empty(), "a root that fits is there again");
  if (again->root != nullptr) {
    Describe(again->root, 0, read);
    for (const CfgNode* node : ObjectsOf(again->root)) {
      Require(node->childCount > 0 || node->firstChild == nullptr, "leaves are saved as leaves");
    }
  }
  Require(read == saved, "what is read is what was saved");
  CfgClose(again);
}

// ---- Operations --------------------------------------------------------------------------------

// A name of the input's choice: one that is apt to break something, or one that the tree has.
// Null is one of them.
const char16_t* PickName(std::uint8_t choice, const std::vector<CfgNode*>& objects,
                         std::array<char16_t, kCfgListNameUnits>& buffer) {
  static const std::u16string k127(127, u'n');
  static const std::u16string k128(128, u'n');
  static const std::u16string kWide(64, u'\x00E9');
  static const std::array<const char16_t*, 16> kNames = {
      nullptr,       u"",       u"version",      u"UIParam",        u"a,b:c>d",   u"x,type",
      u"childobjs",  u">",      u"endobj>",      u"childobjs>",     k127.c_str(), k128.c_str(),
      kWide.c_str(), u"\xD800", u"\xD83D\xDDA8", u"cuspapersetting"};
  if (choice < kNames.size() || objects.empty()) {
    return kNames[choice % kNames.size()];
  }
  Utf8ToWide(objects[choice % objects.size()]->name, buffer);
  return buffer.data();
}

struct Step {
  std::uint8_t operation;
  std::uint8_t object;
  std::uint8_t name;
  std::uint8_t value;
};

void Add(CfgNode* node, const char16_t* name, std::uint8_t value) {
  static constexpr std::array<const char*, 6> kTypes = {"null", "string", "binary",
                                                        "",     ",,",     "a:b"};
  const std::int32_t before = node == nullptr ? 0 : node->childCount;
  const std::int32_t len = (value % 16) * 97 - 97;
  static const std::vector<char> bytes(2000, 'v');
  const CfgNode* child = CfgAddChild(node, name, kTypes[value % kTypes.size()],
                                     value % 5 == 0 ? nullptr : bytes.data(), len);
  if (child == nullptr) {
    Require(node == nullptr || node->childCount == before, "a refusal changes nothing");
    return;
  }
  Require(node->lastChild == child && child->nextSibling == nullptr, "new children go to the end");
  Require(child->childCount == 0 && child->len == len, "a new child is a leaf");
  Require(node->childCount - (before == INT32_MAX ? 0 : 1) == before, "the count grows by one");
}

template <typename Name>
void Delete(CfgNode* node, const Name* name, const CfgNode* found) {
  const std::int32_t before = node == nullptr ? 0 : node->childCount;
  const bool deleted = CfgDeleteChild(node, name);
  Require(deleted == (found != nullptr), "what is found is deleted, and nothing else");
  Require(node == nullptr || node->childCount == before - (deleted ? 1 : 0), "the count follows");
}

void List(const CfgNode* node, std::size_t capacity, std::size_t rowUnits) {
  constexpr char16_t kPoison = u'\xCDCD';
  std::vector<char16_t> rows(capacity * rowUnits, kPoison);
  const std::size_t count = CfgListChildren(node, rows, rowUnits);
  Require(count <= capacity || rowUnits == 0, "no more is listed than fits");
  for (std::size_t i = 0; i < rows.size(); i += rowUnits) {
    const std::u16string_view row(rows.data() + i, rowUnits);
    Require(i / rowUnits < count ? row.find(u'\0') != std::u16string_view::npos
                                 : row.find_first_not_of(kPoison) == std::u16string_view::npos,
            "rows are terminated, others left alone");
  }
}

void Replace(CfgNode* node, const char16_t* newName, const char16_t* oldName, bool withValue) {
  static const std::vector<char> bytes(kCfgReplacedValueBytes, 'r');
  const CfgNode* replaced =
      CfgReplaceNode(node, newName, oldName, withValue ? bytes.data() : nullptr);
  Require(replaced == nullptr ||
              (replaced->len == kCfgReplacedValueBytes && replaced->childCount == 0 &&
               std::string_view(replaced->type) == "binary"),
          "a replaced object is a favourite");
}

void Apply(Scene& scene, CfgHandle* handle, const Step& step) {
  const std::vector<CfgNode*> objects = ObjectsOf(handle->root);
  std::array<char16_t, kCfgListNameUnits> nameBuffer;
  std::array<char16_t, kCfgListNameUnits> otherBuffer;
  const char16_t* name = PickName(step.name, objects, nameBuffer);
  const char16_t* other = PickName(step.value, objects, otherBuffer);
  const std::size_t place = step.object % (objects.size() + 1);
  CfgNode* node = place == objects.size() ? nullptr : objects[place];
  switch (step.operation % 8) {
    case 0:
      Add(node, name, step.value);
      break;
    case 1:
      Delete(node, name, CfgFindChild(node, name));
      break;
    case 2: {
      // The narrow form, with a name as the tree itself has it.
      const char* narrow = objects.empty() ? nullptr : objects[step.name % objects.size()]->name;
      const std::string copy = narrow == nullptr ? "" : narrow;
      const CfgNode* found = nullptr;
      if (node != nullptr && node->childCount > 0 && narrow != nullptr) {
        for (found = node->firstChild; found != nullptr && copy != found->name;) {
          found = found->nextSibling;
        }
      }
      Delete(node, narrow == nullptr ? nullptr : copy.c_str(), found);
      break;
    }
    case 3:
      List(node, step.value % 8, step.name);
      break;
    case 4:
      Replace(node, name, other, step.object % 3 != 0);
      break;
    case 5:
      if (node != nullptr) {
        const std::vector<std::byte> value(step.value, std::byte{step.name});
        CfgSetValue(*node, value);
      }
      break;
    case 6:
      if (node != nullptr && node->len < 1 << 20) {
        std::vector<std::byte> out = ValueOf(*node);
        out.resize(out.size() + step.value, std::byte{0xC5});
        CfgCopyValue(*node, out);
        Require(std::all_of(out.end() - step.value, out.end(),
                            [](std::byte each) { return each == std::byte{0}; }),
                "zeros follow what is announced");
      }
      break;
    default:
      SaveAndReadAgain(scene, handle);
      break;
  }
  CheckTree(handle->root);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Scene scene;
  fuzz::Input input(data, size);
  const std::uint8_t choices = fuzz::TakeByte(input);
  scene.memory.failingCall = fuzz::TakeByte(input);
  std::vector<Step> steps(fuzz::TakeByte(input) % kMostSteps);
  for (Step& step : steps) {
    step = {fuzz::TakeByte(input), fuzz::TakeByte(input), fuzz::TakeByte(input),
            fuzz::TakeByte(input)};
  }
  scene.memory.largest = 0;
  scene.files.content.assign(input.begin(), input.end());
  scene.files.tellsSize = (choices & 1) == 0;
  scene.files.mostReadAtOnce = (choices & 2) == 0 ? SIZE_MAX : 1 + (choices >> 4);

  CfgHandle* handle = CfgOpen(kPath);
  Require(scene.memory.largest <= std::max(sizeof(CfgHandle), 2048 + 2 * input.size()),
          "no more memory is taken than the file has bytes to fill");
  if (handle != nullptr) {
    CheckTree(handle->root);
    for (const Step& step : steps) {
      Apply(scene, handle, step);
    }
    SaveAndReadAgain(scene, handle);
    CfgClose(handle);
  }
  Require(scene.memory.live == 0, "every block is freed");
  Require(scene.files.open == 0, "every file is closed");
  scene.world.platform.debug.lines.clear();
  return 0;
}
