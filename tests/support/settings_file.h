// The settings file as bytes, put together by hand: what the driver writes is compared with them.
// Also a context full of recognisable bytes, and a window to the file in a test world.
#pragma once

#include "core/ui_context.h"
#include "support/byte_record.h"
#include "support/test_world.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr char16_t kSettingsPath[] =
    u"C:\\users\\ada\\AppData\\Roaming\\Ostrel\\ostrel\\ostrelsettings.dat";
inline constexpr char16_t kSettingsFolder[] = u"C:\\users\\ada\\AppData\\Roaming\\Ostrel\\ostrel";

inline const std::string kVersionBytes("0.0.0.1\0", 8);

// ---- Pieces of a tree ---------------------------------------------------------------------------

inline std::string OpenTag(std::string_view name, std::string_view type, std::size_t len,
                           std::size_t children) {
  return "<object:" + std::string(name) + ",type:" + std::string(type) +
         ",len:" + std::to_string(len) + ",childobjs:" + std::to_string(children) + ">";
}

inline std::string Leaf(std::string_view name, std::string_view type, std::string_view value) {
  return OpenTag(name, type, value.size(), 0) + (value.empty() ? "\n" : std::string(value)) +
         "<endobj>\n";
}

inline std::string Record(std::string_view name, std::string_view value) {
  return Leaf(name, "binary", value);
}

// A container that announces `announced` children, whatever it holds.
inline std::string LyingContainer(std::string_view name, std::size_t announced,
                                  const std::vector<std::string>& children) {
  std::string bytes = OpenTag(name, "null", 0, announced) + "\n";
  for (const std::string& child : children) {
    bytes += child;
  }
  return bytes + "<endobj>\n";
}

inline std::string Container(std::string_view name, const std::vector<std::string>& children) {
  return LyingContainer(name, children.size(), children);
}

inline std::string Version(std::string_view value = kVersionBytes) {
  return Leaf("version", "string", value);
}

// A whole settings file, its branches in the order in which they are made.
struct SettingsTree {
  std::string version = kVersionBytes;
  std::vector<std::string> favorites = {};
  std::vector<std::string> current = {};
  std::vector<std::string> papers = {};
  std::vector<std::string> watermarks = {};

  std::string Bytes() const {
    return Container("cfgobj", {Version(version),
                                Container("UIParam", {Container("savesetting", favorites),
                                                      Container("cursetting", current),
                                                      Container("cuspapersetting", papers),
                                                      Container("watermarksetting", watermarks)})});
  }
};

// ---- Records ------------------------------------------------------------------------------------

inline std::string AsString(const ByteRecord& bytes) {
  return {bytes.begin(), bytes.end()};
}

inline void ClearBytes(ByteRecord& bytes, std::size_t offset, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    bytes.at(offset + i) = 0;
  }
}

// A custom paper, 72 bytes.
inline std::string PaperValue(std::uint32_t id, std::u16string_view name, std::uint16_t width_px600,
                              std::uint16_t length_px600) {
  ByteRecord bytes(72);
  PutNumber(bytes, 0, 2, width_px600);
  PutNumber(bytes, 2, 2, length_px600);
  PutText(bytes, 4, name);
  PutNumber(bytes, 56, 4, id);
  PutNumber(bytes, 60, 4, 1);
  return AsString(bytes);
}

// A context whose whole record is random, but for the favourite's name.
inline std::unique_ptr<UIContext> ContextOf(std::uint32_t seed,
                                            std::u16string_view favoriteName = u"inside") {
  auto context = std::make_unique<UIContext>();
  ByteRecord bytes = RandomBytes(sizeof(DriverDevmode), seed);
  ClearBytes(bytes, 220 + 352, 512);
  PutText(bytes, 220 + 352, favoriteName);
  SetBytes(context->devmode, bytes);
  context->privatePointer = &context->devmode.privateDevmode;
  context->publicPointer = &context->devmode.publicDevmode;
  return context;
}

// A favourite, 8408 bytes: the private part, the public part, and the name in 512 bytes.
inline std::string FavoriteValue(const UIContext& context, std::u16string_view name) {
  const ByteRecord live = BytesOf(context.devmode);
  ByteRecord bytes(live.begin() + 220, live.end());
  bytes.insert(bytes.end(), live.begin(), live.begin() + 220);
  bytes.resize(8408);
  PutText(bytes, 7896, name);
  return AsString(bytes);
}

// ---- The file in a world ------------------------------------------------------------------------

inline void PutSettings(TestWorld& world, std::string_view bytes) {
  const auto view = std::as_bytes(std::span(bytes.data(), bytes.size()));
  world.platform.files.Put(kSettingsPath, {view.begin(), view.end()});
}

// The file's bytes; "(no file)" when there is none.
inline std::string Settings(const TestWorld& world,
                            std::u16string_view path = std::u16string_view(kSettingsPath)) {
  const auto* content = world.platform.files.Get(path);
  if (content == nullptr) {
    return "(no file)";
  }
  return {reinterpret_cast<const char*>(content->data()), content->size()};
}

// Calls of one operation since the trace was started.
inline std::size_t CallsOf(const TestWorld& world, std::string_view operation) {
  return static_cast<std::size_t>(std::ranges::count(world.platform.faults.trace(), operation));
}

// Bytes with all that isn't a plain character left out, so that two trees can be read in a report.
inline std::string Readable(std::string_view bytes) {
  std::string text;
  std::size_t hidden = 0;
  const auto flush = [&] {
    if (hidden != 0) {
      text += "[" + std::to_string(hidden) + "]";
      hidden = 0;
    }
  };
  for (const char each : bytes) {
    if (each == '\n' || (each >= ' ' && each <= '~')) {
      flush();
      text += each;
    } else {
      ++hidden;
    }
  }
  flush();
  return text.substr(0, 4000);
}

// Empty when both are the same; else where they part.
inline std::string FileDifference(std::string_view actual, std::string_view expected) {
  if (actual == expected) {
    return "";
  }
  const std::size_t common =
      static_cast<std::size_t>(std::ranges::mismatch(actual, expected).in1 - actual.begin());
  const auto around = [common](std::string_view bytes) {
    const std::size_t start = common < 80 ? 0 : common - 80;
    return Readable(bytes.substr(std::min(start, bytes.size()), 240));
  };
  return "they part at byte " + std::to_string(common) + " (" + std::to_string(actual.size()) +
         " bytes instead of " + std::to_string(expected.size()) + "): is\n" + around(actual) +
         "\ninstead of\n" + around(expected);
}

#define EXPECT_SETTINGS(world, expected) \
  EXPECT_EQ(::ostrel::test::FileDifference(::ostrel::test::Settings(world), expected), "")

}  // namespace ostrel::test
