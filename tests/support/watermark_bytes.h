// Watermark records as plain bytes, put together by their offsets, and stores of them.
#pragma once

#include "core/settings_record.h"
#include "support/byte_record.h"
#include "support/settings_file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

struct WatermarkFacts {
  std::int16_t index = 0;
  std::int16_t flag = 1;
  std::u16string name = {};
  std::u16string text = {};
  std::u16string typeface = u"Arial";
  std::int16_t size = 72;
  std::int16_t transparent = 1;
  std::int16_t angle = 0;
  std::int16_t scale = 0;
  std::int16_t fontChosen = 1;
  std::int16_t offset = 50;
  std::int16_t stamp = 0;  // itself, the date and the time
};

// 1348 bytes.
inline ByteRecord WatermarkBytes(const WatermarkFacts& facts) {
  ByteRecord bytes(1348);
  PutNumber(bytes, 0, 2, facts.index);
  PutNumber(bytes, 2, 2, facts.flag);
  PutText(bytes, 4, facts.name);
  PutText(bytes, 70, facts.text);
  PutText(bytes, 200, facts.typeface);
  PutNumber(bytes, 784, 2, facts.size);
  PutNumber(bytes, 790, 2, facts.transparent);
  PutNumber(bytes, 794, 2, facts.angle);
  PutNumber(bytes, 796, 2, facts.scale);
  PutNumber(bytes, 798, 2, 5);
  PutNumber(bytes, 802, 2, facts.fontChosen);
  PutNumber(bytes, 810, 2, facts.offset);
  PutNumber(bytes, 812, 2, facts.offset);
  PutNumber(bytes, 814, 2, 1);
  for (const std::size_t stamp : {816U, 818U, 820U}) {
    PutNumber(bytes, stamp, 2, facts.stamp);
  }
  return bytes;
}

inline WatermarkData RecordOf(const WatermarkFacts& facts) {
  WatermarkData record;
  SetBytes(record, WatermarkBytes(facts));
  return record;
}

// The six that come with the driver.
inline std::vector<WatermarkFacts> FactoryFacts() {
  // clang-format off
  return {
      // Index, flag, name,      text,            typeface, size, transparent, angle, scale, font, offset, stamp
      {0, 0, u"[No Watermark]", u"",             u"Arial",   54, 0,  0, 100, 0, 50, 0},
      {1, 1, u"Confidential",   u"Confidential", u"Arial",  114, 1, 45,   0, 1, 50, 0},
      {2, 1, u"Watermark",      u"Watermark",    u"Arial",  114, 1, 45,   0, 1, 50, 0},
      {3, 1, u"DateAndTime",    u"",             u"Arial",   54, 1,  0,   0, 1, 50, 1},
      {4, 1, u"<New>",          u"<New>",        u"Arial",   72, 1,  0,   0, 1, 50, 0},
      {3, 2, u"<New>",          u"",             u"",        72, 0,  0, 100, 0, 0,  0},
  };
  // clang-format on
}

// A watermark of this name and text.
inline WatermarkFacts Mark(std::int16_t index, std::u16string_view name) {
  return {.index = index, .name = std::u16string(name), .text = std::u16string(name)};
}

// A record under a name of the store, which must be plain.
inline std::string StoredAs(std::u16string_view name, const WatermarkFacts& facts) {
  return Record(std::string(name.begin(), name.end()), AsString(WatermarkBytes(facts)));
}
inline std::string Stored(const WatermarkFacts& facts) {
  return StoredAs(facts.name, facts);
}

inline std::string StoreOf(const std::vector<std::string>& records) {
  return SettingsTree{.watermarks = records}.Bytes();
}
inline std::string StoreOf(const std::vector<WatermarkFacts>& marks) {
  std::vector<std::string> records;
  for (const WatermarkFacts& mark : marks) {
    records.push_back(Stored(mark));
  }
  return StoreOf(records);
}

// The store of a first run.
inline std::vector<WatermarkFacts> FirstFour() {
  std::vector<WatermarkFacts> facts = FactoryFacts();
  facts.resize(4);
  return facts;
}

}  // namespace ostrel::test
