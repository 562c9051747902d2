// The user's watermarks where the driver keeps them: written by its own logic into the real
// settings file, and read back by offsets. Also the list box of the window system that shows them.
#include "core/ui_context.h"
#include "driver_words.h"
#include "pages/watermark_list.h"
#include "print_system_fixture.h"
#include "settings_folder.h"
#include "watermark/watermark_record.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace ostrel::print_system {
namespace {

constexpr std::size_t kRecordBytes = 1348;

struct Mark {
  std::int16_t index;
  std::int16_t flag;
  std::wstring name;
  std::wstring text;
  std::int16_t size;
  std::int16_t transparent;
  std::int16_t angle;
  std::int16_t scale;
  std::int16_t fontChosen;
  std::int16_t stamp;
};

std::string Value(const Mark& mark) {
  std::string value(kRecordBytes, '\0');
  const auto put = [&value](std::size_t offset, std::int16_t number) {
    std::memcpy(&value[offset], &number, sizeof(number));
  };
  const auto putText = [&value](std::size_t offset, const std::wstring& text) {
    std::memcpy(&value[offset], text.data(), text.size() * sizeof(wchar_t));
  };
  put(0, mark.index);
  put(2, mark.flag);
  putText(4, mark.name);
  putText(70, mark.text);
  putText(200, L"Arial");
  put(784, mark.size);
  put(790, mark.transparent);
  put(794, mark.angle);
  put(796, mark.scale);
  put(798, 5);
  put(802, mark.fontChosen);
  put(810, 50);
  put(812, 50);
  put(814, 1);
  for (const std::size_t stamp : {816U, 818U, 820U}) {
    put(stamp, mark.stamp);
  }
  return value;
}

std::string Stored(const Mark& mark) {
  return Leaf(std::string(mark.name.begin(), mark.name.end()), "binary", Value(mark));
}

// clang-format off
const Mark kFirstFour[] = {
    // Index, flag, name,      text,            size, transparent, angle, scale, font chosen, stamp
    {0, 0, L"[No Watermark]", L"",              54, 0,  0, 100, 0, 0},
    {1, 1, L"Confidential",   L"Confidential", 114, 1, 45,   0, 1, 0},
    {2, 1, L"Watermark",      L"Watermark",    114, 1, 45,   0, 1, 0},
    {3, 1, L"DateAndTime",    L"",              54, 1,  0,   0, 1, 1},
};
// clang-format on

Mark Plain(std::int16_t index, const std::wstring& name) {
  return {index, 1, name, name, 72, 1, 0, 0, 1, 0};
}

std::string FileOf(const std::vector<Mark>& marks) {
  SettingsTree tree;
  for (const Mark& mark : marks) {
    tree.watermarks.push_back(Stored(mark));
  }
  return tree.Bytes();
}

class StoredWatermarks : public testing::Test {
 protected:
  SettingsPlace place_;
  Printer printer_{kTestPrinter};
  DriverWords words_{ConfigLibraryPath(printer_.get())};
};

TEST_F(StoredWatermarks, OfAFirstRunAreTheFourFactoryRecords) {
  place_.Clear();
  EXPECT_EQ(ReadWatermarkList().count, 4U);
  const std::string bytes = place_.Read().value_or("");
  for (const Mark& mark : kFirstFour) {
    const std::string name(mark.name.begin(), mark.name.end());
    const auto value = LeafValue(bytes, {"cfgobj", "UIParam", "watermarksetting", name});
    ASSERT_TRUE(value.has_value()) << name;
    EXPECT_EQ(value->size(), kRecordBytes) << name;
    EXPECT_TRUE(*value == Value(mark)) << name;
  }
  EXPECT_EQ(LeafValue(bytes, {"cfgobj", "UIParam", "watermarksetting", "<New>"}), std::nullopt);
  EXPECT_EQ(bytes, FileOf({kFirstFour[0], kFirstFour[1], kFirstFour[2], kFirstFour[3]}));
}

TEST_F(StoredWatermarks, AreAddedReplacedAndNamedInTheFile) {
  place_.Write(FileOf({Plain(4, L"Draft"), Plain(5, L"Copy")}));
  WatermarkData record = ReadWatermarkList().records()[0];
  record.PageWMIndex = 6;
  const WatermarkName name = UniqueName({true, 6}, u"Draft");
  std::memcpy(record.PageWMName, name.data(), sizeof(record.PageWMName));
  EXPECT_TRUE(AddWatermark(record));
  Mark added = Plain(6, L"Draft");
  added.name = L"Draft~1";
  EXPECT_EQ(place_.Read(), FileOf({Plain(4, L"Draft"), Plain(5, L"Copy"), added}));
  record.PageWMIndex = 4;
  EXPECT_TRUE(ReplaceWatermark(record));
  added.index = 4;
  EXPECT_EQ(place_.Read(), FileOf({Plain(5, L"Copy"), added}));
}

// ---- In the window system's list box ------------------------------------------------------------

class WatermarkListBox : public StoredWatermarks {
 protected:
  WatermarkListBox() {
    context_->publicPointer = &context_->devmode.publicDevmode;
    context_->privatePointer = &context_->devmode.privateDevmode;
    BuildUIParamTable(context_.get());
    SetWindowLongPtrW(page_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(context_.get()));
    state_.dialog = win32::ToWindow(page_);
    state_.list.Attach(state_.dialog, kList);
  }
  ~WatermarkListBox() override { DestroyWindow(page_); }

  std::vector<std::wstring> Rows() const {
    std::vector<std::wstring> rows;
    for (LRESULT row = 0; row < SendMessageW(box_, LB_GETCOUNT, 0, 0); ++row) {
      std::array<wchar_t, 64> text = {};
      SendMessageW(box_, LB_GETTEXT, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(text.data()));
      rows.emplace_back(text.data());
    }
    return rows;
  }
  LRESULT IdOf(WPARAM row) const { return SendMessageW(box_, LB_GETITEMDATA, row, 0); }

  static constexpr int kList = 1145;
  HWND page_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                               nullptr, nullptr);
  // The style of a list that the system would sort by name.
  HWND box_ = CreateWindowExW(0, L"LISTBOX", L"", WS_CHILD | LBS_STANDARD, 0, 0, 90, 90, page_,
                              reinterpret_cast<HMENU>(INT_PTR{kList}), nullptr, nullptr);
  std::unique_ptr<UIContext> context_ = std::make_unique<UIContext>();
  WatermarkPageState state_;
};

TEST_F(WatermarkListBox, ShowsTheRecordsByIdAndPutsTheFileInOrder) {
  place_.Write(FileOf({Plain(1, L"Z"), Plain(3, L"B"), Plain(2, L"C")}));
  FillWatermarkList(state_);
  EXPECT_EQ(Rows(), (std::vector<std::wstring>{L"Z", L"C", L"B"}));
  EXPECT_EQ(IdOf(0), 1);
  EXPECT_EQ(IdOf(2), 3);
  EXPECT_EQ(place_.Read(), FileOf({Plain(1, L"Z"), Plain(2, L"C"), Plain(3, L"B")}));
}

TEST_F(WatermarkListBox, SelectsTheRowOfTheOneInForce) {
  place_.Write(FileOf({Plain(1, L"Z"), Plain(2, L"C"), Plain(2, L"D")}));
  FillWatermarkList(state_);
  const std::string inForce = Value(Plain(2, L"D"));
  std::memcpy(&context_->privatePointer->WatermarkData, inForce.data(), inForce.size());
  EXPECT_TRUE(SelectWatermark(state_, 2));
  EXPECT_EQ(SendMessageW(box_, LB_GETCURSEL, 0, 0), 2);
  EXPECT_FALSE(SelectWatermark(state_, 1));
}

}  // namespace
}  // namespace ostrel::print_system
