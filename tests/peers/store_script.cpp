#include "store_script.h"

#include "config/setting_stores.h"
#include "config/utf8.h"
#include "core/process_state.h"
#include "core/text.h"
#include "core/ui_context.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace ostrel::peers {
namespace {

constexpr std::u16string_view k31Units = u"abcdefghijklmnopqrstuvwxyz01234";
constexpr std::u16string_view k32Units = u"abcdefghijklmnopqrstuvwxyz-32-un";
constexpr std::u16string_view k33Units = u"abcdefghijklmnopqrstuvwxyz-33-uni";
static_assert(k31Units.size() == 31 && k32Units.size() == 32 && k33Units.size() == 33);

// Bytes that a reader must not take for anything: tags, line ends, NUL, and all other values.
void FillRecord(std::span<std::byte> record, std::uint32_t seed) {
  static constexpr std::string_view kTags = "<endobj>\n<object:x,type:y,len:9,childobjs:9>\0";
  std::uint32_t state = seed * 2654435761U + 1;
  for (std::size_t i = 0; i < record.size(); ++i) {
    state = state * 1664525U + 1013904223U;
    record[i] = i % 251 < kTags.size() ? static_cast<std::byte>(kTags[i % 251])
                                       : static_cast<std::byte>(state >> 24);
  }
}

// A context whose whole record is made of such bytes.
std::unique_ptr<UIContext> Context(std::uint32_t seed, std::u16string_view favorite) {
  auto context = std::make_unique<UIContext>();
  FillRecord(std::as_writable_bytes(std::span(&context->devmode, 1)), seed);
  context->privatePointer = &context->devmode.privateDevmode;
  context->publicPointer = &context->devmode.publicDevmode;
  CopyText(context->privatePointer->FavoriteName, favorite);
  return context;
}

CustomPaperRecord Paper(std::uint32_t id, std::u16string_view name, std::uint16_t width_px600,
                        std::uint16_t length_px600) {
  CustomPaperRecord record = {};
  record.Width = width_px600;
  record.Length = length_px600;
  CopyText(record.Name, name);
  record.PaperId = id;
  record.Unit = 1;
  record.ExactWidth = static_cast<float>(width_px600) + 0.25F;
  record.ExactLength = static_cast<float>(length_px600) + 0.1F;
  return record;
}

std::vector<std::byte> Watermark(std::uint32_t seed, std::size_t bytes = sizeof(WatermarkData)) {
  std::vector<std::byte> record(bytes);
  FillRecord(record, seed);
  return record;
}

// Collects what didn't go as expected.
class Outcome {
 public:
  void Expect(bool good, std::string_view operation) {
    if (!good) {
      text_ += std::string(operation) + "\n";
    }
  }
  void ExpectFailure(bool good, std::string_view operation) { Expect(!good, operation); }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

bool SaveFavorite(const std::u16string& name, std::uint32_t seed) {
  return FavoriteStore().Save(name.c_str(), *Context(seed, name));
}

void FirstFavorites(Outcome& outcome) {
  const FavoriteStore store;
  for (const char16_t* name :
       {u"Default", u"Text", u"Images", u"Booklet", u"R\u00E9glage \u2013 \u65E5\u672C", u"a,b:c>d",
        u"\U0001F5A8 duplex", u"\xD800 alone"}) {
    outcome.Expect(SaveFavorite(name, 1), "a favourite is saved");
  }
  outcome.Expect(SaveFavorite(std::u16string(k31Units), 2), "31 units are a name");
  outcome.Expect(SaveFavorite(std::u16string(k32Units), 3), "32 units are cut to a name");
  outcome.ExpectFailure(SaveFavorite(std::u16string(k33Units), 4), "33 units are no name");
  outcome.ExpectFailure(SaveFavorite(std::u16string(31, u'\u0800') + u"x", 5) &&
                            SaveFavorite(std::u16string(33, u'\u0800'), 5),
                        "33 units of three bytes are no name");
  outcome.Expect(SaveFavorite(u"Text", 6), "a favourite is saved again");
  outcome.Expect(store.Delete(u"Images"), "a favourite is deleted");
  outcome.ExpectFailure(store.Delete(u"Images"), "a favourite that is gone can't be deleted");
  outcome.ExpectFailure(store.Delete(u"text"), "names tell small letters from capitals");
  outcome.Expect(store.Rename(u"Brosch\u00FCre", u"Booklet", *Context(7, u"Booklet")),
                 "a favourite is renamed");
  outcome.Expect(store.SaveCurrent(u"Current", *Context(8, u"Current")), "the current is saved");
  outcome.Expect(store.SaveCurrent(u"Other", *Context(9, u"Other")), "the current is replaced");
  outcome.Expect(store.Read(u"Default", nullptr), "a favourite exists");
}

void FirstPapers(Outcome& outcome) {
  const CustomPaperStore store;
  outcome.Expect(NextCustomPaperId() == 288, "the first id of a paper is 288");
  outcome.Expect(store.Save(u"Card", Paper(288, u"Card", 1181, 2362)), "a paper is saved");
  outcome.Expect(store.Save(u"Label", Paper(290, u"\u00C9tiquette", 2480, 3508)),
                 "a second paper is saved");
  outcome.Expect(NextCustomPaperId() == 289, "a gap is the next id");
  outcome.Expect(store.Save(u"Strip", Paper(289, u"Strip", 1800, 8400)), "a third one is saved");
  outcome.Expect(store.Save(u"Card", Paper(288, u"Card", 1200, 2400)), "a paper is saved again");
  outcome.Expect(store.Delete(u"Label"), "a paper is deleted");
}

void FirstWatermarks(Outcome& outcome) {
  const WatermarkStore store;
  outcome.Expect(store.Save(u"DRAFT", Watermark(20)), "a watermark is saved");
  outcome.Expect(store.Save(u"\u05E1\u05D5\u05D3\u05D9", Watermark(21)), "a second one is saved");
  outcome.Expect(store.Save(u"tiny", Watermark(22, 1)), "a watermark of one byte is saved");
  outcome.Expect(store.Save(u"none", {}), "a watermark of no bytes is saved");
  outcome.Expect(store.Save(u"DRAFT", Watermark(23)), "a watermark is saved again");
  outcome.Expect(store.Delete(u"tiny"), "a watermark is deleted");
}

void SecondAct(Outcome& outcome) {
  const FavoriteStore favorites;
  const auto context = Context(30, u"");
  outcome.Expect(favorites.Read(u"Brosch\u00FCre", context.get()), "a renamed favourite is read");
  outcome.Expect(favorites.Save(u"Copy", *context), "what was read is saved under another name");
  outcome.Expect(favorites.Rename(u"Text 2", u"Text", *context), "a favourite is renamed again");
  outcome.Expect(favorites.Delete(u"a,b:c>d"), "an odd name is deleted");
  for (int number = favorites.Count(); number < favorites.MaxCount(); ++number) {
    const std::u16string name = u"No. " + std::u16string(1, static_cast<char16_t>(u'A' + number));
    outcome.Expect(SaveFavorite(name, static_cast<std::uint32_t>(40 + number)),
                   "the branch is filled");
  }
  const CustomPaperStore papers;
  for (int number = papers.Count(); number < papers.MaxCount(); ++number) {
    const auto id = static_cast<std::uint32_t>(NextCustomPaperId());
    const std::u16string name = u"Size " + std::u16string(1, static_cast<char16_t>(u'A' + number));
    outcome.Expect(papers.Save(name.c_str(), Paper(id, name, 3000, 4000)), "the branch is filled");
  }
  outcome.Expect(NextCustomPaperId() == -1, "a full branch has no next id");
  const WatermarkStore watermarks;
  outcome.Expect(watermarks.Delete(u"none"), "an empty watermark is deleted");
  outcome.Expect(watermarks.Save(u"CONFIDENTIAL", Watermark(60)), "a watermark is added");
}

// ---- Describing ---------------------------------------------------------------------------------

std::string Describe(std::span<const std::byte> record) {
  std::uint64_t sum = 14695981039346656037U;  // FNV-1a, 64 bits
  for (const std::byte byte : record) {
    sum = (sum ^ static_cast<std::uint8_t>(byte)) * 1099511628211U;
  }
  return std::to_string(record.size()) + " bytes, sum " + std::to_string(sum);
}

// Names and records of a store; `read` gives what can be said about a name's record.
template <typename Store, typename Read>
std::string DescribeStore(std::string_view title, const Store& store, Read read) {
  NameList names;
  const int count = store.List(names);
  std::string text = std::string(title) + ": " + std::to_string(count) + " listed, " +
                     std::to_string(store.Count()) + " counted\n";
  for (int i = 0; i < count; ++i) {
    const auto& row = names.rows[static_cast<std::size_t>(i)];
    char name[256];
    WideToUtf8(FieldText(row), name);
    text += "  " + std::string(name) + ": " + read(row.data()) + "\n";
  }
  return text;
}

}  // namespace

std::string RunAct(int act) {
  Outcome outcome;
  outcome.Expect(InitSettingsFile(), "the settings file is made");
  if (act == 1) {
    FirstFavorites(outcome);
    FirstPapers(outcome);
    FirstWatermarks(outcome);
  } else {
    SecondAct(outcome);
  }
  return outcome.text();
}

std::string DescribeStores() {
  const std::string unread = "can't be read";
  const FavoriteStore favorites;
  const CustomPaperStore papers;
  const WatermarkStore watermarks;
  return DescribeStore("favourites", favorites,
                       [&](const char16_t* name) {
                         const auto context = std::make_unique<UIContext>();
                         return favorites.Read(name, context.get())
                                    ? Describe(std::as_bytes(std::span(&context->devmode, 1)))
                                    : unread;
                       }) +
         DescribeStore("papers", papers,
                       [&](const char16_t* name) {
                         CustomPaperRecord record = {};
                         return papers.Read(name, record)
                                    ? Describe(std::as_bytes(std::span(&record, 1)))
                                    : unread;
                       }) +
         DescribeStore("watermarks", watermarks, [&](const char16_t* name) {
           std::vector<std::byte> record(sizeof(WatermarkData));
           return watermarks.Read(name, record) ? Describe(record) : unread;
         });
}

}  // namespace ostrel::peers
