// Config tree files as tests write and look at them: bytes put together by hand, trees as one line
// of text for each object, and a world that must be left without a trace.
#pragma once

#include "config/cfg_file.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr char16_t kCfgFolder[] = u"C:\\users\\ada";
inline constexpr char16_t kCfgPath[] = u"C:\\users\\ada\\settings.dat";
inline constexpr char kCfgEnd[] = "<endobj>\n";

// ---- Bytes --------------------------------------------------------------------------------------

inline std::string CfgTag(std::string_view name, std::string_view type, std::string_view len,
                          std::string_view count) {
  return std::string("<object:")
      .append(name)
      .append(",type:")
      .append(type)
      .append(",len:")
      .append(len)
      .append(",childobjs:")
      .append(count)
      .append(">");
}

inline std::string CfgLeaf(std::string_view name, std::string_view type, std::string_view value) {
  return CfgTag(name, type, std::to_string(value.size()), "0")
      .append(value.empty() ? "\n" : value)
      .append(kCfgEnd);
}

inline std::string CfgContainer(std::string_view name,
                                std::initializer_list<std::string> children) {
  std::string bytes = CfgTag(name, "null", "0", std::to_string(children.size())) + "\n";
  for (const std::string& child : children) {
    bytes += child;
  }
  return bytes + kCfgEnd;
}

// The tree of a new file.
inline const std::string kNewCfgFile(
    "<object:cfgobj,type:null,len:0,childobjs:1>\n"
    "<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n"
    "<endobj>\n",
    116);

// A file with one custom paper record of four bytes, one of which looks like the end of a tag.
inline const std::string kWorkedCfgFile =
    std::string("<object:cfgobj,type:null,len:0,childobjs:2>\n") +
    std::string("<object:version,type:string,len:8,childobjs:0>0.0.0.1\0<endobj>\n", 63) +
    "<object:UIParam,type:null,len:0,childobjs:1>\n"
    "<object:cuspapersetting,type:null,len:0,childobjs:1>\n" +
    std::string("<object:Card,type:binary,len:4,childobjs:0>\x01\x3E\x00\x3C<endobj>\n", 56) +
    "<endobj>\n"
    "<endobj>\n"
    "<endobj>\n";

// ---- Trees --------------------------------------------------------------------------------------

inline std::string CfgValueOf(const CfgNode& node) {
  std::string value(node.len > 0 ? static_cast<std::size_t>(node.len) : 0, '\xC5');
  CfgCopyValue(node, std::as_writable_bytes(std::span(value)));
  return value;
}

// One object: name:type:len:childCount, and its value behind a "=".
inline std::string CfgObjectText(const CfgNode& node) {
  std::string text = std::string(node.name) + ':' + node.type + ':' + std::to_string(node.len) +
                     ':' + std::to_string(node.childCount);
  return node.len < 1 ? text : text + '=' + CfgValueOf(node);
}

// The objects of a tree in file order, each behind its depth in ".". A handle of no objects gives
// none.
inline std::vector<std::string> CfgTreeText(const CfgHandle* handle) {
  std::vector<std::string> lines;
  std::string depth;
  const CfgNode* node = handle == nullptr ? nullptr : handle->root;
  while (node != nullptr) {
    lines.push_back(depth + CfgObjectText(*node));
    if (node->firstChild != nullptr) {
      depth += '.';
      node = node->firstChild;
      continue;
    }
    while (node != nullptr && node->nextSibling == nullptr) {
      node = node->parent;
      depth.resize(depth.empty() ? 0 : depth.size() - 1);
    }
    node = node == nullptr ? nullptr : node->nextSibling;
  }
  return lines;
}

// The names of the direct children, in order, by the list itself.
inline std::vector<std::string> CfgChildren(const CfgNode* node) {
  std::vector<std::string> names;
  const CfgNode* last = nullptr;
  for (const CfgNode* child = node->firstChild; child != nullptr; child = child->nextSibling) {
    EXPECT_EQ(child->parent, node);
    names.emplace_back(child->name);
    last = child;
  }
  EXPECT_EQ(node->lastChild, last);
  return names;
}

// ---- The world ----------------------------------------------------------------------------------

class CfgFileTest : public testing::Test {
 protected:
  CfgFileTest() { world_.platform.files.CreateDirectoryW(kCfgFolder); }
  void TearDown() override {
    world_.platform.faults.Clear();
    EXPECT_EQ(world_.Leftovers(), "");
  }

  void Put(std::string_view bytes) {
    const auto view = std::as_bytes(std::span(bytes));
    world_.platform.files.Put(kCfgPath, {view.begin(), view.end()});
  }
  std::string Get(const char16_t* path = kCfgPath) const {
    const auto* bytes = world_.platform.files.Get(path);
    return bytes == nullptr
               ? "no file"
               : std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  }

  // The tree of these bytes.
  ScopedCfg Read(std::string_view bytes) {
    Put(bytes);
    return ScopedCfg(CfgOpen(kCfgPath));
  }

  std::vector<std::u16string>& debugLines() { return world_.platform.debug.lines; }
  headless::FaultPlan& faults() { return world_.platform.faults; }

  TestWorld world_;
};

// Stands before a world's memory and remembers what was asked for.
class RecordingMemory final : public Memory {
 public:
  explicit RecordingMemory(TestWorld& world)
      : world_(world),
        lists_{world.platform.print,
               world.platform.locale,
               world.platform.modules,
               world.platform.files,
               world.platform.registry,
               world.platform.security,
               world.platform.shell,
               world.platform.windows,
               world.platform.graphics,
               world.platform.system,
               *this,
               world.platform.debug} {
    world_.process.platform = &lists_;
  }
  ~RecordingMemory() { world_.process.platform = &world_.platform.lists; }
  RecordingMemory(const RecordingMemory&) = delete;
  RecordingMemory& operator=(const RecordingMemory&) = delete;

  void* HeapAlloc(std::size_t sizeBytes) override {
    sizes.push_back(sizeBytes);
    return world_.platform.memory.HeapAlloc(sizeBytes);
  }
  void HeapFree(void* block) override { world_.platform.memory.HeapFree(block); }

  std::size_t largest() const { return sizes.empty() ? 0 : *std::ranges::max_element(sizes); }

  std::vector<std::size_t> sizes;

 private:
  TestWorld& world_;
  Platform lists_;
};

}  // namespace ostrel::test
