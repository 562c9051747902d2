#include "config/cfg_file.h"

#include "config/utf8.h"
#include "core/heap_block.h"
#include "core/process_state.h"
#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

namespace ostrel {
namespace {

constexpr std::size_t kReadBlockBytes = 1024;
constexpr std::size_t kSaveBlockBytes = 1024;
constexpr std::size_t kNodeEstimateBytes = 512;
constexpr std::size_t kValueSlackBytes = 32;  // zeros behind a value, so that a text is terminated
constexpr std::size_t kFieldLimitBytes = 128;

// A value that a cut file announces and doesn't hold is written out as zeros. Beyond this there is
// no memory for it, whatever the system might still give.
constexpr std::uint64_t kMissingBytesLimit = std::uint64_t{64} << 20;

Memory& Heap() {
  return World().memory;
}

// A name as it is kept: UTF-8 of at most 127 bytes. Nothing when it doesn't fit.
struct NodeName {
  explicit NodeName(const char16_t* name) {
    valid = name != nullptr && WideToUtf8(name, text).fits;
  }
  std::string_view view() const { return text.data(); }

  std::array<char, kCfgNameBytes> text = {};
  bool valid;
};

void CopyNarrow(std::span<char, kCfgNameBytes> field, std::string_view text) {
  text = text.substr(0, text.find('\0'));
  text = text.substr(0, kCfgNameBytes - 1);
  std::fill(std::copy(text.begin(), text.end(), field.begin()), field.end(), '\0');
}

// ---- Trees --------------------------------------------------------------------------------------

CfgNode* NewNode(std::string_view name, std::string_view type, std::int32_t childCount,
                 std::int32_t len) {
  auto* node = static_cast<CfgNode*>(Heap().HeapAlloc(sizeof(CfgNode)));
  if (node != nullptr) {
    CopyNarrow(node->name, name);
    CopyNarrow(node->type, type);
    node->childCount = childCount;
    node->len = len;
  }
  return node;
}

// Gives the node a zeroed value of so many bytes. Result: false when there is no memory.
bool AllocateValue(CfgNode& node, std::uint32_t bytes) {
  auto* value = static_cast<std::byte*>(Heap().HeapAlloc(bytes + kValueSlackBytes));
  if (value == nullptr) {
    return false;
  }
  Heap().HeapFree(node.value);
  node.value = value;
  node.storedBytes = bytes;
  return true;
}

// Makes room for so many bytes behind those that are there, zeros for now. Result: false, with the
// value as it was, when there is no memory.
bool GrowValue(CfgNode& node, std::uint32_t bytes) {
  auto* value = static_cast<std::byte*>(Heap().HeapAlloc(bytes + kValueSlackBytes));
  if (value == nullptr) {
    return false;
  }
  std::memcpy(value, node.value, node.storedBytes);
  Heap().HeapFree(std::exchange(node.value, value));
  node.storedBytes = bytes;
  return true;
}

void Append(CfgNode& parent, CfgNode& child) {
  child.parent = &parent;
  if (parent.lastChild == nullptr) {
    parent.firstChild = &child;
  } else {
    parent.lastChild->nextSibling = &child;
  }
  parent.lastChild = &child;
}

void Unlink(CfgNode& parent, CfgNode& child) {
  CfgNode* before = nullptr;
  for (CfgNode* node = parent.firstChild; node != &child; node = node->nextSibling) {
    before = node;
  }
  (before == nullptr ? parent.firstChild : before->nextSibling) = child.nextSibling;
  if (parent.lastChild == &child) {
    parent.lastChild = before;
  }
  child.nextSibling = nullptr;
}

// The next node of a subtree in depth-first order, without recursion. Null behind the last.
template <typename Node>
Node* NextInSubtree(Node* node, const CfgNode* subtree, bool enterChildren = true) {
  if (enterChildren && node->firstChild != nullptr) {
    return node->firstChild;
  }
  while (node != subtree) {
    if (node->nextSibling != nullptr) {
      return node->nextSibling;
    }
    node = node->parent;
  }
  return nullptr;
}

// Frees a subtree that hangs nowhere any more. Children go before their parents: the way leads down
// to a leaf, frees it and climbs, so that the depth of a hostile tree costs nothing.
void FreeSubtree(CfgNode* subtree) {
  CfgNode* node = subtree;
  while (node != nullptr) {
    if (CfgNode* child = node->firstChild) {
      node->firstChild = child->nextSibling;
      node = child;
      continue;
    }
    CfgNode* up = node == subtree ? nullptr : node->parent;
    Heap().HeapFree(node->value);
    Heap().HeapFree(node);
    node = up;
  }
}

CfgNode* FindByName(const CfgNode* node, std::string_view name) {
  if (node == nullptr || node->childCount < 1) {
    return nullptr;
  }
  for (CfgNode* child = node->firstChild; child != nullptr; child = child->nextSibling) {
    if (name == child->name) {
      return child;
    }
  }
  return nullptr;
}

// ---- Tags ---------------------------------------------------------------------------------------

// A number as the tags write it. Text that is none gives 0; one beyond 32 bits the nearest number.
std::int32_t TagNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  if (text.starts_with('+') && text.size() > 1 && text[1] != '-') {
    text.remove_prefix(1);
  }
  std::int32_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec == std::errc::result_out_of_range) {
    return text.starts_with('-') ? INT32_MIN : INT32_MAX;
  }
  return number;
}

struct OpenTag {
  std::string_view name;
  std::string_view type;
  std::int32_t len;
  std::int32_t childCount;
};

// Takes the next field off a tag: what stands between the next colon and the comma behind it. A
// text that begins with commas owns that whole run of them but the last.
std::optional<std::string_view> TakeField(std::string_view& tag) {
  const std::size_t colon = tag.find(':');
  if (colon == std::string_view::npos) {
    return std::nullopt;
  }
  tag.remove_prefix(colon + 1);
  std::size_t end = 0;
  if (tag.starts_with(',')) {
    end = std::min(tag.find_first_not_of(','), tag.size()) - 1;
  } else {
    end = tag.find(',');
  }
  if (end > kFieldLimitBytes) {  // or there is no comma
    return std::nullopt;
  }
  const std::string_view field = tag.substr(0, end);
  tag.remove_prefix(end);
  return field;
}

// Reads an open tag, which ends in a comma. Fields are counted by position; their words are not
// compared. The name ends where ",type" begins, so that it may hold commas and colons.
std::optional<OpenTag> ParseOpenTag(std::string_view tag) {
  constexpr std::string_view kNameEnd = ",type";
  if (!tag.starts_with("object")) {
    return std::nullopt;
  }
  const std::size_t colon = tag.find(':');
  if (colon == std::string_view::npos) {
    return std::nullopt;
  }
  tag.remove_prefix(colon + 1);
  const std::size_t nameEnd = tag.find(kNameEnd);
  if (nameEnd > kFieldLimitBytes) {  // or there is none
    return std::nullopt;
  }
  OpenTag parsed = {};
  parsed.name = tag.substr(0, nameEnd);
  tag.remove_prefix(nameEnd);
  const auto type = TakeField(tag);
  const auto len = type ? TakeField(tag) : std::nullopt;
  const auto childCount = len ? TakeField(tag) : std::nullopt;
  if (!childCount) {
    return std::nullopt;
  }
  parsed.type = *type;
  parsed.len = TagNumber(*len);
  parsed.childCount = TagNumber(*childCount);
  return parsed;
}

// A whole open tag in a buffer of 256 bytes.
class TagText {
 public:
  explicit TagText(const CfgNode& node) {
    Add("<object:");
    Add(node.name);
    Add(",type:");
    Add(node.type);
    Add(",len:");
    AddNumber(node.len);
    Add(",childobjs:");
    AddNumber(node.childCount);
    Add(node.len < 1 ? ">\n" : ">");
  }
  // Whether it fits with its terminator. One that doesn't must not be written.
  bool fits() const { return size_ < kCfgTagBytes; }
  std::string_view view() const { return {text_.data(), size_}; }

 private:
  void Add(std::string_view piece) {
    if (size_ + piece.size() <= text_.size()) {
      piece.copy(text_.data() + size_, piece.size());
    }
    size_ += piece.size();
  }
  void AddNumber(std::int32_t number) {
    std::array<char, 12> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    Add({digits.data(), static_cast<std::size_t>(end - digits.data())});
  }

  std::array<char, kCfgTagBytes> text_;
  std::size_t size_ = 0;
};

// ---- Reading ------------------------------------------------------------------------------------

// An opened file, closed at the end of the scope.
class ScopedFile {
 public:
  ScopedFile(const char16_t* path, Files::Access access)
      : file_(World().files.CreateFileW(path, access)) {}
  ~ScopedFile() {
    if (file_ != nullptr) {
      World().files.CloseHandle(file_);
    }
  }
  ScopedFile(const ScopedFile&) = delete;
  ScopedFile& operator=(const ScopedFile&) = delete;
  FileHandle get() const { return file_; }

 private:
  FileHandle file_;
};

// The bytes of a file, read in blocks of 1024 bytes. A block that can't be read ends them.
class BlockReader {
 public:
  explicit BlockReader(FileHandle file) : file_(file) {}

  // What has been read and not been taken yet; empty at the end of the file.
  std::span<const std::byte> Peek() {
    if (place_ == filled_) {
      place_ = 0;
      filled_ = ReadBlock(block_);
    }
    return {block_.data() + place_, filled_ - place_};
  }
  void Skip(std::size_t bytes) { place_ += bytes; }

  // Takes up to `out.size()` bytes, the greater part of them straight from the file. Result: bytes
  // taken; fewer only at the end of the file.
  std::size_t Take(std::span<std::byte> out) {
    std::size_t taken = 0;
    while (taken < out.size()) {
      const std::span<std::byte> rest = out.subspan(taken);
      if (place_ == filled_ && rest.size() >= kReadBlockBytes) {
        const std::size_t read = ReadBlock(rest.first<kReadBlockBytes>());
        if (read == 0) {
          break;
        }
        taken += read;
        continue;
      }
      const std::span<const std::byte> ready = Peek();
      if (ready.empty()) {
        break;
      }
      const std::size_t count = std::min(ready.size(), rest.size());
      std::copy_n(ready.begin(), count, rest.begin());
      Skip(count);
      taken += count;
    }
    return taken;
  }

  // Whether the bytes ended at a block that can't be read, and not with the file.
  bool failed() const { return failed_; }

  // Bytes that may still come, by the size that the file had when it was first asked for: a hint.
  std::uint64_t BytesLeft() {
    if (!size_) {
      std::uint64_t size = 0;
      size_ = World().files.GetFileSizeEx(file_, &size) ? size : 0;
    }
    const std::uint64_t behind = bytesRead_ - (filled_ - place_);
    return *size_ > behind ? *size_ - behind : 0;
  }

 private:
  std::size_t ReadBlock(std::span<std::byte, kReadBlockBytes> out) {
    std::uint32_t read = 0;
    if (failed_ || !World().files.ReadFile(file_, out.data(), kReadBlockBytes, &read)) {
      failed_ = true;
      return 0;
    }
    bytesRead_ += read;
    return read;
  }

  FileHandle file_;
  std::array<std::byte, kReadBlockBytes> block_;
  std::size_t place_ = 0;
  std::size_t filled_ = 0;
  std::uint64_t bytesRead_ = 0;
  bool failed_ = false;
  std::optional<std::uint64_t> size_;
};

// Builds a tree from a stream of tags and values.
class TreeReader {
 public:
  explicit TreeReader(FileHandle file) : reader_(file) {}
  ~TreeReader() { FreeSubtree(root_); }
  TreeReader(const TreeReader&) = delete;
  TreeReader& operator=(const TreeReader&) = delete;

  // Reads to the end of the file. Result: false for a tag that can't be read, without memory, and
  // when reading breaks off: half a tree must not be saved over the whole one.
  bool Read() { return ReadObjects() && !reader_.failed(); }

  CfgNode* release() { return std::exchange(root_, nullptr); }

 private:
  bool ReadObjects() {
    while (FindTagStart()) {
      if (!ReadTag()) {
        return tagCutOff_;  // a file may end anywhere; what was read stands
      }
      if (!HandleTag()) {
        return false;
      }
    }
    return true;
  }

  // Skips what stands between tags: line feeds, and whatever a hand may have put there.
  bool FindTagStart() {
    for (;;) {
      const std::span<const std::byte> ready = reader_.Peek();
      if (ready.empty()) {
        return false;
      }
      const std::size_t before = DistanceTo('<', ready);
      if (before < ready.size()) {
        reader_.Skip(before + 1);
        return true;
      }
      reader_.Skip(before);
    }
  }

  // Collects a tag up to the ">" that ends it, which is one behind the word of either kind of tag.
  bool ReadTag() {
    size_ = 0;
    tagCutOff_ = false;
    for (;;) {
      const std::span<const std::byte> ready = reader_.Peek();
      if (ready.empty()) {
        tagCutOff_ = true;
        return false;
      }
      const std::size_t before = DistanceTo('>', ready);
      if (!AddToTag(ready.first(before))) {
        return false;
      }
      reader_.Skip(before);
      if (before == ready.size()) {
        continue;
      }
      const bool ends = tag().find("childobjs") != std::string_view::npos ||
                        tag().find("endobj") != std::string_view::npos;
      if (ends) {
        reader_.Skip(1);
        text_[size_++] = ',';
        return true;
      }
      if (!AddToTag(ready.subspan(before, 1))) {
        return false;
      }
      reader_.Skip(1);
    }
  }

  // Result: false when the tag with its comma and a terminator would not fit. No legal tag is so
  // long.
  bool AddToTag(std::span<const std::byte> bytes) {
    if (bytes.size() + 2 > text_.size() - size_) {
      return bytes.empty();
    }
    std::memcpy(text_.data() + size_, bytes.data(), bytes.size());
    size_ += bytes.size();
    return true;
  }

  // Bytes before the first of these; all of them when there is none.
  static std::size_t DistanceTo(char wanted, std::span<const std::byte> bytes) {
    const void* found = std::memchr(bytes.data(), wanted, bytes.size());
    return found == nullptr
               ? bytes.size()
               : static_cast<std::size_t>(static_cast<const std::byte*>(found) - bytes.data());
  }

  bool HandleTag() {
    if (tag().starts_with("endobj")) {
      if (current_ != nullptr && current_->parent != nullptr) {
        current_ = current_->parent;
      }
      return true;
    }
    const std::optional<OpenTag> open = ParseOpenTag(tag());
    if (!open) {
      return false;
    }
    CfgNode* node = NewNode(open->name, open->type, open->childCount, open->len);
    if (node == nullptr) {
      return false;
    }
    if (root_ == nullptr) {
      root_ = node;
    } else {
      Append(*current_, *node);
    }
    current_ = node;
    return node->len < 1 || ReadValue(*node);
  }

  // A tag may announce any length; memory is taken for what the file can still fill. Its size is
  // a hint only: where it can't be had, or another process makes the file longer meanwhile, the
  // value grows as its bytes arrive. They are taken by count, never for tags.
  bool ReadValue(CfgNode& node) {
    const auto announced = static_cast<std::uint32_t>(node.len);
    const auto room = [announced](std::uint64_t bytes) {
      return static_cast<std::uint32_t>(std::min<std::uint64_t>(announced, bytes));
    };
    if (!AllocateValue(node, room(reader_.BytesLeft()))) {
      return false;
    }
    std::size_t taken = reader_.Take({node.value, node.storedBytes});
    while (taken == node.storedBytes && taken < announced && !reader_.Peek().empty()) {
      if (!GrowValue(node, room(std::max(taken * 2, kReadBlockBytes)))) {
        return false;
      }
      taken += reader_.Take({node.value + taken, node.storedBytes - taken});
    }
    return true;
  }

  std::string_view tag() const { return {text_.data(), size_}; }

  BlockReader reader_;
  std::array<char, kCfgTagBytes> text_;
  std::size_t size_ = 0;
  bool tagCutOff_ = false;
  CfgNode* root_ = nullptr;
  CfgNode* current_ = nullptr;
};

// ---- Writing ------------------------------------------------------------------------------------

// Whether a node's value goes into the file: a container's does not.
bool WritesValue(const CfgNode& node) {
  return node.childCount < 1 && node.len > 0;
}

// The size of the block that a tree is written through: 512 bytes for each node and its value, in
// whole blocks of 1024. Nothing when there can be no memory for it.
std::optional<std::size_t> ImageBytes(const CfgNode* root) {
  std::uint64_t bytes = 0;
  std::uint64_t missing = 0;
  for (const CfgNode* node = root; node != nullptr; node = NextInSubtree(node, root)) {
    bytes += kNodeEstimateBytes;
    if (node->len > 0) {
      bytes += static_cast<std::uint32_t>(node->len);
      missing += static_cast<std::uint32_t>(node->len) -
                 std::min(static_cast<std::uint32_t>(node->len), node->storedBytes);
    }
  }
  // One write takes 32 bits of size.
  if (missing > kMissingBytesLimit || bytes > UINT32_MAX - kSaveBlockBytes) {
    return std::nullopt;
  }
  return static_cast<std::size_t>((bytes / kSaveBlockBytes + 1) * kSaveBlockBytes);
}

// Writes a tree into a block that is large enough for it.
class TreeWriter {
 public:
  explicit TreeWriter(std::byte* block) : start_(block), place_(block) {}

  void Write(const CfgNode* root) {
    const CfgNode* node = root;
    while (node != nullptr) {
      const bool written = WriteStart(*node);
      const bool entered = written && node->childCount > 0;
      if (entered && node->firstChild != nullptr) {
        node = node->firstChild;
        continue;
      }
      if (written) {
        WriteEnd();
      }
      // Up through the containers that end here.
      while (node != root && node->nextSibling == nullptr) {
        node = node->parent;
        WriteEnd();
      }
      node = node == root ? nullptr : node->nextSibling;
    }
  }

  std::size_t size() const { return static_cast<std::size_t>(place_ - start_); }

 private:
  // Result: false for an object whose tag doesn't fit; it is left out with all that is in it.
  bool WriteStart(const CfgNode& node) {
    const TagText tag(node);
    if (!tag.fits()) {
      return false;
    }
    Put(tag.view());
    if (WritesValue(node)) {
      const std::span<std::byte> value(place_, static_cast<std::size_t>(node.len));
      CfgCopyValue(node, value);
      place_ += value.size();
    }
    return true;
  }

  void WriteEnd() { Put("<endobj>\n"); }

  void Put(std::string_view text) {
    std::memcpy(place_, text.data(), text.size());
    place_ += text.size();
  }

  std::byte* start_;
  std::byte* place_;
};

// Cuts off what stands behind the image that was just written: the rest of a longer one, by another
// process that had emptied the file at the same moment. Such a file could not be read any more, by
// anyone and for good. A file that has become shorter since is left as short: to make it longer
// would put zeros into whatever the other process has written.
bool CutBehind(FileHandle file, std::size_t imageBytes) {
  std::uint64_t size = 0;
  return !World().files.GetFileSizeEx(file, &size) || size <= imageBytes ||
         World().files.SetEndOfFile(file);
}

void WriteImage(const char16_t* path, std::span<const std::byte> image) {
  const ScopedFile file(path, Files::Access::kCreateAlwaysForWriting);
  std::uint32_t written = 0;
  if (file.get() == nullptr ||
      !World().files.WriteFile(file.get(), image.data(), static_cast<std::uint32_t>(image.size()),
                               &written) ||
      written != image.size() || !CutBehind(file.get(), image.size())) {
    char16_t buffer[kMaxPathUnits + 64];
    TextBuilder line(buffer);
    line.Add(u"config file can't be written: ").Add(path).Add(u"\n");
    World().debug.OutputDebugStringW(buffer);
  }
}

bool SaveTree(const char16_t* path, const CfgNode* root) {
  const std::optional<std::size_t> bytes = ImageBytes(root);
  const HeapBlock<std::byte> block = bytes ? HeapBlock<std::byte>(*bytes) : HeapBlock<std::byte>();
  if (!block) {
    return false;
  }
  TreeWriter writer(block.get());
  writer.Write(root);
  WriteImage(path, {block.get(), writer.size()});
  return true;
}

// Opening for appending makes an empty file, leaves an existing one, or finds that there can be
// none. The file is closed again before it is written.
bool CanBeMade(const char16_t* path) {
  return ScopedFile(path, Files::Access::kOpenAlwaysForAppending).get() != nullptr;
}

// A node is either a leaf with a value or a container: what takes children gives its value up,
// since a container's tag must not announce bytes that aren't written.
void BecomeContainer(CfgNode& node) {
  Heap().HeapFree(std::exchange(node.value, nullptr));
  node.storedBytes = 0;
  node.len = 0;
}

// Removes a child with its subtree.
void RemoveChild(CfgNode& parent, CfgNode& child) {
  Unlink(parent, child);
  FreeSubtree(&child);
  --parent.childCount;
}

}  // namespace

CfgHandle* CfgOpen(const char16_t* path) {
  // The handle must be able to name the file again when it is saved.
  if (path == nullptr || CallerText(path).size() >= kMaxPathUnits) {
    return nullptr;
  }
  if (World().files.GetFileAttributesW(path) == kInvalidFileAttributes && !CfgCreate(path)) {
    return nullptr;
  }
  const ScopedFile file(path, Files::Access::kOpenExistingForUpdate);
  if (file.get() == nullptr) {
    return nullptr;
  }
  TreeReader reader(file.get());
  if (!reader.Read()) {
    return nullptr;
  }
  HeapBlock<CfgHandle> handle(sizeof(CfgHandle));
  if (!handle) {
    return nullptr;
  }
  CopyText(handle->path, CallerText(path));
  handle->root = reader.release();
  return handle.release();
}

bool CfgSave(const CfgHandle* handle) {
  return handle != nullptr && handle->root != nullptr && SaveTree(handle->path, handle->root);
}

void CfgClose(CfgHandle* handle) {
  if (handle != nullptr) {
    FreeSubtree(handle->root);
    Heap().HeapFree(handle);
  }
}

bool CfgCreate(const char16_t* path) {
  CfgNode* root = NewNode("cfgobj", "null", 0, 0);
  const bool built =
      root != nullptr && CfgAddChild(root, u"version", "string", kCfgVersion.data(),
                                     static_cast<std::int32_t>(kCfgVersion.size())) != nullptr;
  const bool saved = built && CanBeMade(path) && SaveTree(path, root);
  FreeSubtree(root);
  return saved;
}

CfgNode* CfgFindChild(const CfgNode* node, const char16_t* name) {
  const NodeName wanted(name);
  return wanted.valid ? FindByName(node, wanted.view()) : nullptr;
}

CfgNode* CfgAddChild(CfgNode* parent, const char16_t* name, const char* type, const void* value,
                     std::int32_t len) {
  const NodeName childName(name);
  if (parent == nullptr || type == nullptr || !childName.valid) {
    return nullptr;
  }
  CfgNode* child = NewNode(childName.view(), type, 0, len);
  if (child == nullptr) {
    return nullptr;
  }
  const bool hasValue = len > 0;
  if (!TagText(*child).fits() ||
      (hasValue && !AllocateValue(*child, static_cast<std::uint32_t>(len)))) {
    FreeSubtree(child);
    return nullptr;
  }
  if (hasValue && value != nullptr) {
    std::memcpy(child->value, value, static_cast<std::size_t>(len));
  }
  BecomeContainer(*parent);
  Append(*parent, *child);
  if (parent->childCount < INT32_MAX) {  // a file may announce the greatest number there is
    ++parent->childCount;
  }
  return child;
}

bool CfgDeleteChild(CfgNode* parent, const char* name) {
  CfgNode* child = name == nullptr
                       ? nullptr
                       : FindByName(parent, std::string_view(name).substr(0, kCfgNameBytes - 1));
  if (child == nullptr) {
    return false;
  }
  RemoveChild(*parent, *child);
  return true;
}

bool CfgDeleteLastChild(CfgNode* parent) {
  if (parent == nullptr || parent->lastChild == nullptr) {
    return false;
  }
  RemoveChild(*parent, *parent->lastChild);
  return true;
}

bool CfgDeleteChild(CfgNode* parent, const char16_t* name) {
  const NodeName wanted(name);
  return wanted.valid && CfgDeleteChild(parent, wanted.text.data());
}

std::size_t CfgListChildren(const CfgNode* node, std::span<char16_t> rows, std::size_t rowUnits) {
  if (node == nullptr || rowUnits == 0) {
    return 0;
  }
  const std::size_t units = std::min(rowUnits, kCfgListNameUnits);
  std::size_t count = 0;
  for (const CfgNode* child = node->firstChild;
       child != nullptr && (count + 1) * rowUnits <= rows.size(); child = child->nextSibling) {
    Utf8ToWide(child->name, rows.subspan(count * rowUnits, units));
    ++count;
  }
  return count;
}

CfgNode* CfgReplaceNode(CfgNode* subtree, const char16_t* newName, const char16_t* oldName,
                        const void* value) {
  const NodeName wanted(oldName);
  const NodeName replacement(newName);
  if (subtree == nullptr || !wanted.valid || !replacement.valid) {
    return nullptr;
  }
  CfgNode* node = subtree;
  while (node != nullptr && wanted.view() != node->name) {
    node = NextInSubtree(node, subtree);
  }
  if (node == nullptr) {
    return nullptr;
  }
  if (value == nullptr) {
    Heap().HeapFree(std::exchange(node->value, nullptr));
    node->storedBytes = 0;
  } else {
    if (!AllocateValue(*node, kCfgReplacedValueBytes)) {
      return nullptr;
    }
    std::memcpy(node->value, value, kCfgReplacedValueBytes);
  }
  CopyNarrow(node->name, replacement.view());
  CopyNarrow(node->type, "binary");
  node->len = kCfgReplacedValueBytes;
  node->childCount = 0;  // what hangs below it is neither found nor written any more
  return node;
}

bool CfgSetValue(CfgNode& node, std::span<const std::byte> value) {
  if (!AllocateValue(node, static_cast<std::uint32_t>(value.size()))) {
    return false;
  }
  std::ranges::copy(value, node.value);
  node.len = static_cast<std::int32_t>(value.size());
  node.childCount = 0;
  return true;
}

void CfgCopyValue(const CfgNode& node, std::span<std::byte> out) {
  const std::size_t announced = node.len > 0 ? static_cast<std::size_t>(node.len) : 0;
  const std::size_t held = std::min<std::size_t>(announced, node.storedBytes);
  const std::size_t copied = std::min(held, out.size());
  if (copied != 0) {
    std::memcpy(out.data(), node.value, copied);
  }
  const std::span<std::byte> rest = out.subspan(copied);
  if (!rest.empty()) {
    std::memset(rest.data(), 0, rest.size());
  }
}

}  // namespace ostrel
