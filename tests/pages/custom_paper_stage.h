// The dialog of the user's own papers, shown over the in-memory window system with the template and
// the texts that are shipped, and a settings file made of plain bytes.
#pragma once

#include "core/devmode_lifecycle.h"
#include "core/ui_context.h"
#include "pages/custom_paper.h"
#include "platform/headless/user.h"
#include "support/byte_record.h"
#include "support/case_name.h"
#include "support/settings_file.h"
#include "support/test_world.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

inline constexpr std::int32_t kNameBox = 1009;
inline constexpr std::int32_t kDefaults = 1064;
inline constexpr std::int32_t kMillimeters = 1110;
inline constexpr std::int32_t kInches = 1111;
inline constexpr std::int32_t kHelp = 1112;
inline constexpr std::int32_t kWidthSpin = 1270;
inline constexpr std::int32_t kLengthSpin = 1273;
inline constexpr std::int32_t kWidth = 1358;
inline constexpr std::int32_t kDelete = 1417;
inline constexpr std::int32_t kSave = 1421;
inline constexpr std::int32_t kLength = 1442;

// ---- Stored papers, byte by byte ----------------------------------------------------------------

struct PaperFacts {
  std::u16string name;
  std::uint32_t id = 288;
  std::uint32_t unit = 1;
  std::uint16_t width = 0;   // pixels at 600 dpi
  std::uint16_t length = 0;  // pixels at 600 dpi
  float exactWidth = 0;
  float exactLength = 0;
};

// 100 by 150 mm, under whatever name and id.
inline PaperFacts Card(std::u16string_view name, std::uint32_t id = 288) {
  return {std::u16string(name), id, 1, 2362, 3543, 2362.204833984375F, 3543.30712890625F};
}
// 4 by 6 inches.
inline PaperFacts Photo(std::u16string_view name, std::uint32_t id = 288) {
  return {std::u16string(name), id, 2, 2400, 3600, 2400.0F, 3600.0F};
}

// The 72 bytes of a record, and what stands behind the name's 26 units if it is longer.
inline std::string PaperBytes(const PaperFacts& facts) {
  const auto bits = [](float number) {
    std::uint32_t word = 0;
    static_assert(sizeof(word) == sizeof(number));
    std::memcpy(&word, &number, sizeof(word));
    return word;
  };
  ByteRecord bytes(72);
  PutNumber(bytes, 0, 2, facts.width);
  PutNumber(bytes, 2, 2, facts.length);
  PutText(bytes, 4, std::u16string_view(facts.name).substr(0, 26));
  PutNumber(bytes, 56, 4, facts.id);
  PutNumber(bytes, 60, 4, facts.unit);
  PutNumber(bytes, 64, 4, bits(facts.exactWidth));
  PutNumber(bytes, 68, 4, bits(facts.exactLength));
  return AsString(bytes);
}

// A paper as the settings file has it. Its name must be plain.
inline std::string StoredPaper(const PaperFacts& facts) {
  return Record(std::string(facts.name.begin(), facts.name.end()), PaperBytes(facts));
}

inline std::string StoreOf(const std::vector<PaperFacts>& papers) {
  SettingsTree tree;
  for (const PaperFacts& paper : papers) {
    tree.papers.push_back(StoredPaper(paper));
  }
  return tree.Bytes();
}

// So many papers, named "Paper 1" and so on, with ids from 288 on.
inline std::vector<PaperFacts> Papers(std::size_t count) {
  std::vector<PaperFacts> papers;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = "Paper " + std::to_string(i + 1);
    papers.push_back(
        Card(std::u16string(name.begin(), name.end()), static_cast<std::uint32_t>(288 + i)));
  }
  return papers;
}

// ---- What is seen -------------------------------------------------------------------------------

// The dialog as a user sees it.
struct PaperSeen {
  std::u16string name;
  std::u16string width;
  std::u16string length;
  std::int32_t unit;  // the radio button that is checked
  bool canSave;
  bool canDelete;
  bool operator==(const PaperSeen&) const = default;
};
inline void PrintTo(const PaperSeen& seen, std::ostream* out) {
  const auto plain = [](const std::u16string& text) {
    return std::string(text.begin(), text.end());
  };
  *out << "\"" << plain(seen.name) << "\" " << plain(seen.width) << " x " << plain(seen.length)
       << ", unit " << seen.unit << (seen.canSave ? ", can save" : "")
       << (seen.canDelete ? ", can delete" : "");
}

// The paper in force.
struct PaperWords {
  std::int16_t size;
  std::int16_t width;   // tenths of a millimeter
  std::int16_t length;  // tenths of a millimeter
  bool operator==(const PaperWords&) const = default;
};
inline void PrintTo(const PaperWords& words, std::ostream* out) {
  *out << words.size << ": " << words.width << " x " << words.length;
}

inline constexpr PaperWords kA4Words = {9, 2100, 2970};
inline constexpr PaperWords kLetterWords = {1, 2159, 2794};
// Of a paper as Card and Photo make them.
inline constexpr PaperWords CardWords(std::int16_t id) {
  return {id, 1000, 1500};
}
inline constexpr PaperWords PhotoWords(std::int16_t id) {
  return {id, 1016, 1524};
}

// ---- The stage ----------------------------------------------------------------------------------

class CustomPaperStage {
 public:
  CustomPaperStage() {
    InitDriverDevmode(&context.devmode, kPrinterName, nullptr);
    context.publicPointer = &context.devmode.publicDevmode;
    context.privatePointer = &context.devmode.privateDevmode;
    std::u16string(kDriverName).copy(context.driverName, kDriverNameUnits - 1);
    SetWords(kA4Words);
  }
  CustomPaperStage(const CustomPaperStage&) = delete;
  CustomPaperStage& operator=(const CustomPaperStage&) = delete;

  // ---- Before the dialog opens
  void Put(const std::vector<PaperFacts>& papers) { PutSettings(world, StoreOf(papers)); }
  void SetWords(const PaperWords& words) {
    shared().dmPaperSize = words.size;
    shared().dmPaperWidth = words.width;
    shared().dmPaperLength = words.length;
  }
  void UseLetterCountry() { world.platform.locale.country = u"1"; }
  void UseA4Country() { world.platform.locale.country = u"49"; }
  void UseLanguage(const std::string& suffix, bool decimalComma) {
    language = *LibraryResources(suffix);
    world.process.DecimalCommaLanguage = decimalComma;
  }
  // To be changed before the dialog opens.
  headless::Resources language = *LibraryResources("enus");

  // Shows the dialog; `play` does what the user does. One that it leaves open is cancelled.
  bool Show(const std::function<void()>& play = {}) {
    world.platform.modules.InstallResources(kEnglishLibraryPath,
                                            std::make_shared<const headless::Resources>(language));
    context.languageModule = world.platform.modules.LoadLibraryW(kEnglishLibraryPath);
    windows().onDialog = [&](WindowHandle dialog) {
      dialog_ = dialog;
      ++timesShown;
      if (play) {
        play();
      }
    };
    const bool accepted = ShowCustomPaperDialog(nullptr, context);
    windows().onDialog = {};
    dialog_ = nullptr;
    return accepted;
  }

  // ---- The dialog
  headless::User user() { return {world.platform, dialog_}; }
  headless::HeadlessWindows& windows() { return world.platform.windows; }
  WindowHandle dialog() const { return dialog_; }
  bool IsOpen() { return windows().IsOpenDialog(dialog_); }
  std::u16string Text(std::int32_t id) { return user().Text(id); }
  PaperSeen Seen() {
    const std::int32_t unit = user().Checked(kMillimeters) == user().Checked(kInches) ? 0
                              : user().Checked(kMillimeters)                          ? kMillimeters
                                                                                      : kInches;
    return {Text(kNameBox), Text(kWidth),          Text(kLength),
            unit,           user().Enabled(kSave), user().Enabled(kDelete)};
  }
  // A text that code puts into a control; an edit tells its dialog of it.
  void SetText(std::int32_t id, const std::u16string& text) {
    windows().SetWindowTextW(user().Control(id), text.c_str());
  }
  // WM_COMMAND, whatever the control's state is.
  void Command(std::int32_t id, std::uint16_t code = kBnClicked) {
    windows().Deliver(dialog_, kWmCommand, MakeWords(static_cast<std::uint16_t>(id), code),
                      reinterpret_cast<std::intptr_t>(user().Control(id)));
  }
  // Gives a new name and saves under it.
  void SaveAs(std::u16string_view name) {
    EXPECT_TRUE(user().Type(kNameBox, name));
    EXPECT_TRUE(user().Click(kSave));
  }

  // ---- The record and the file
  PublicDevmode& shared() { return *context.publicPointer; }
  PaperWords Words() {
    return {shared().dmPaperSize, shared().dmPaperWidth, shared().dmPaperLength};
  }
  const std::vector<headless::HeadlessWindows::Box>& boxes() { return windows().boxes; }
  static std::u16string English(std::uint32_t id) { return EnglishStrings().at(id); }

  TestWorld world;
  UIContext context = {};
  int timesShown = 0;

 private:
  WindowHandle dialog_ = nullptr;
};

}  // namespace ostrel::test

namespace ostrel {

// Nearly every file of these tests names them.
using test::Card;
using test::CustomPaperStage;
using test::kDefaults;
using test::kDelete;
using test::kInches;
using test::kLength;
using test::kLengthSpin;
using test::kMillimeters;
using test::kNameBox;
using test::kSave;
using test::kWidth;
using test::kWidthSpin;
using test::PaperFacts;
using test::Papers;
using test::PaperSeen;
using test::PaperWords;
using test::Photo;
using test::StoreOf;

}  // namespace ostrel
