// What a config tree file costs on a real disk: a file of 16 favourites, 16 papers and 16
// watermarks is parsed, listed, saved and changed. The ratios that matter are against two peers in
// the same run: the same bytes read in plain blocks of 1024 through the same list of file
// operations, and the same data as XML with base64 values, parsed and decoded by pugixml.
#include "config/cfg_file.h"
#include "core/process_state.h"
#include "support/disk_files.h"
#include "support/test_world.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <pugixml.hpp>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {
namespace {

constexpr char16_t kPath[] = u"settings.dat";
constexpr char16_t kXmlPath[] = u"settings.xml";
constexpr char kPlainReads[] = "CfgReadSameBytesPeer";
constexpr char kXml[] = "CfgParseXmlPeer";
constexpr int kRecords = 16;
constexpr std::size_t kRowUnits = 64;

struct Group {
  const char16_t* name;
  const char* narrow;
  std::int32_t recordBytes;
};
constexpr std::array<Group, 3> kGroups = {
    Group{u"savesetting", "savesetting", kCfgReplacedValueBytes},
    Group{u"cuspapersetting", "cuspapersetting", 72},
    Group{u"watermarksetting", "watermarksetting", 1348},
};

// The plain heap. The counting one of the tests would be what is measured.
class PlainMemory final : public Memory {
 public:
  void* HeapAlloc(std::size_t sizeBytes) override { return std::calloc(1, sizeBytes); }
  void HeapFree(void* block) override { std::free(block); }
};

std::u16string NameOf(int record) {
  std::u16string name = u"Draft, both sides ";
  name.push_back(static_cast<char16_t>(u'A' + record));
  return name;
}

// Bytes as records have them: half of them zero.
std::vector<std::uint8_t> RecordOf(const Group& group, int record) {
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(group.recordBytes));
  std::uint32_t state = static_cast<std::uint32_t>(record) * 2654435761U + 1;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    state = state * 1664525U + 1013904223U;
    bytes[i] = static_cast<std::uint8_t>(state >> 24);
  }
  return bytes;
}

// ---- Base64 for the peer (RFC 4648) ------------------------------------------------------------

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string ToBase64(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      bits = (bits << 8) | (k < count ? bytes[i + k] : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text.push_back(k <= count ? kDigits[(bits >> (18 - 6 * k)) & 0x3F] : '=');
    }
  }
  return text;
}

constexpr auto kDigitValues = [] {
  std::array<std::uint8_t, 256> values = {};
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    values[static_cast<std::uint8_t>(kDigits[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}();

std::vector<std::uint8_t> FromBase64(std::string_view text) {
  std::vector<std::uint8_t> bytes(text.size() / 4 * 3);
  std::size_t place = 0;
  for (std::size_t i = 0; i + 4 <= text.size(); i += 4) {
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      bits = (bits << 6) | kDigitValues[static_cast<std::uint8_t>(text[i + k])];
    }
    bytes[place++] = static_cast<std::uint8_t>(bits >> 16);
    bytes[place++] = static_cast<std::uint8_t>(bits >> 8);
    bytes[place++] = static_cast<std::uint8_t>(bits);
  }
  const std::size_t padding = text.size() - std::min(text.find('='), text.size());
  bytes.resize(bytes.size() - std::min(padding, bytes.size()));
  return bytes;
}

// ---- Scene --------------------------------------------------------------------------------------

void Check(bool done) {
  if (!done) {
    throw std::runtime_error("the scene of the bench can't be set");
  }
}

class Scene {
 public:
  Scene() {
    world_.process.platform = &lists_;
    WriteTree();
    WriteXml();
  }

  Files& files() { return files_; }
  std::string PlaceOf(const char16_t* path) const { return files_.PlaceOf(path); }

 private:
  void WriteTree() {
    const ScopedCfg file(CfgOpen(kPath));
    Check(file != nullptr);
    CfgNode* settings = CfgAddChild(file->root, u"UIParam", "null", nullptr, 0);
    for (const Group& group : kGroups) {
      CfgNode* parent = CfgAddChild(settings, group.name, "null", nullptr, 0);
      for (int i = 0; i < kRecords; ++i) {
        Check(CfgAddChild(parent, NameOf(i).c_str(), "binary", RecordOf(group, i).data(),
                          group.recordBytes) != nullptr);
      }
    }
    Check(CfgSave(file.get()));
  }

  void WriteXml() {
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("cfgobj");
    root.append_child("version").append_child(pugi::node_pcdata).set_value("0.0.0.1");
    pugi::xml_node settings = root.append_child("UIParam");
    for (const Group& group : kGroups) {
      pugi::xml_node parent = settings.append_child(group.narrow);
      for (int i = 0; i < kRecords; ++i) {
        pugi::xml_node record = parent.append_child("record");
        const std::u16string name = NameOf(i);
        record.append_attribute("name").set_value(std::string(name.begin(), name.end()).c_str());
        record.append_child(pugi::node_pcdata).set_value(ToBase64(RecordOf(group, i)).c_str());
      }
    }
    Check(document.save_file(PlaceOf(kXmlPath).c_str(), "", pugi::format_raw));
  }

  test::TemporaryFolder folder_;
  test::TestWorld world_;
  test::DiskFiles files_{folder_.path(), world_.platform.debug};
  PlainMemory memory_;
  Platform lists_{world_.platform.print,
                  world_.platform.locale,
                  world_.platform.modules,
                  files_,
                  world_.platform.registry,
                  world_.platform.security,
                  world_.platform.shell,
                  world_.platform.windows,
                  world_.platform.graphics,
                  world_.platform.system,
                  memory_,
                  world_.platform.debug};
};

// ---- Peers --------------------------------------------------------------------------------------

void CfgReadSameBytesPeer(benchmark::State& state) {
  Scene scene;
  std::array<std::byte, 1024> block;
  for (auto _ : state) {
    const FileHandle file = scene.files().CreateFileW(kPath, Files::Access::kOpenExistingForUpdate);
    std::uint32_t count = 0;
    while (scene.files().ReadFile(file, block.data(), block.size(), &count) && count != 0) {
      benchmark::DoNotOptimize(block);
    }
    scene.files().CloseHandle(file);
  }
}
BENCHMARK(CfgReadSameBytesPeer);

void CfgParseXmlPeer(benchmark::State& state) {
  Scene scene;
  const std::string place = scene.PlaceOf(kXmlPath);
  std::int64_t bytes = 0;
  for (auto _ : state) {
    pugi::xml_document document;
    Check(document.load_file(place.c_str()));
    std::vector<std::vector<std::uint8_t>> values;
    for (const pugi::xml_node group : document.child("cfgobj").child("UIParam").children()) {
      for (const pugi::xml_node record : group.children()) {
        values.push_back(FromBase64(record.text().get()));
        bytes += static_cast<std::int64_t>(values.back().size());
      }
    }
    benchmark::DoNotOptimize(values);
  }
  Check(bytes == state.iterations() * kRecords * (kCfgReplacedValueBytes + 72 + 1348));
}
BENCHMARK(CfgParseXmlPeer);

// ---- The tree file ------------------------------------------------------------------------------

void CfgParse(benchmark::State& state, const char* peer) {
  const Scene scene;
  for (auto _ : state) {
    CfgHandle* file = CfgOpen(kPath);
    benchmark::DoNotOptimize(file);
    CfgClose(file);
  }
  state.SetLabel(peer);
}
BENCHMARK_CAPTURE(CfgParse, AgainstPlainReads, kPlainReads);
BENCHMARK_CAPTURE(CfgParse, AgainstXml, kXml);

void CfgListThreeGroups(benchmark::State& state) {
  const Scene scene;
  const ScopedCfg file(CfgOpen(kPath));
  std::vector<char16_t> rows(kRecords * kRowUnits);
  for (auto _ : state) {
    const CfgNode* settings = CfgFindChild(file->root, u"UIParam");
    for (const Group& group : kGroups) {
      benchmark::DoNotOptimize(
          CfgListChildren(CfgFindChild(settings, group.name), rows, kRowUnits));
    }
    benchmark::ClobberMemory();
  }
  state.SetLabel(kPlainReads);
}
BENCHMARK(CfgListThreeGroups);

void CfgSaveAsItIs(benchmark::State& state) {
  const Scene scene;
  const ScopedCfg file(CfgOpen(kPath));
  for (auto _ : state) {
    benchmark::DoNotOptimize(CfgSave(file.get()));
  }
  state.SetLabel(kPlainReads);
}
BENCHMARK(CfgSaveAsItIs);

// As a store does it: open, look up, change, save, close.
void CfgRenameFavourite(benchmark::State& state) {
  const Scene scene;
  const std::vector<std::uint8_t> record = RecordOf(kGroups[0], 0);
  std::u16string name = NameOf(kRecords - 1);
  std::u16string other = u"Booklet";
  for (auto _ : state) {
    const ScopedCfg file(CfgOpen(kPath));
    Check(CfgReplaceNode(CfgFindChild(CfgFindChild(file->root, u"UIParam"), kGroups[0].name),
                         other.c_str(), name.c_str(), record.data()) != nullptr);
    CfgSave(file.get());
    name.swap(other);
  }
  state.SetLabel(kPlainReads);
}
BENCHMARK(CfgRenameFavourite);

}  // namespace
}  // namespace ostrel
