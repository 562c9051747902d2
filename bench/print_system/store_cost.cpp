#include "store_cost.h"

#include "config/setting_stores.h"
#include "core/text.h"
#include "core/ui_context.h"
#include "driver_words.h"
#include "print_system_setup.h"
#include "timing.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ostrel::bench {
namespace {

constexpr int kRounds = 101;
constexpr int kRecords = 16;

std::u16string Name(int number) {
  return std::u16string(u"Record ") + static_cast<char16_t>(u'A' + number);
}

// 16 favourites, 16 papers and 16 watermarks, with bytes of every value in them.
void FillStores(UIContext& context) {
  const auto fill = [](std::span<std::byte> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::byte>(i * 7 + i / 251);
    }
  };
  fill(std::as_writable_bytes(std::span(&context.devmode, 1)));
  CustomPaperRecord paper = {};
  paper.Width = 1800;
  paper.Length = 3000;
  std::array<std::byte, sizeof(WatermarkData)> watermark;
  fill(watermark);
  bool saved = InitSettingsFile();
  for (int number = 0; number < kRecords; ++number) {
    const std::u16string name = Name(number);
    paper.PaperId = static_cast<std::uint32_t>(kFirstStoredPaperId + number);
    saved = saved && FavoriteStore().Save(name.c_str(), context) &&
            CustomPaperStore().Save(name.c_str(), paper) &&
            WatermarkStore().Save(name.c_str(), watermark);
  }
  if (!saved) {
    throw std::runtime_error("the settings file can't be filled");
  }
}

// The file's bytes as the driver takes them: in blocks of 1024. Result: how many there are.
std::size_t ReadPlainly(const wchar_t* path) {
  constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, kShare, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  std::array<BYTE, 1024> block;
  std::size_t total = 0;
  DWORD read = 0;
  while (ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &read, nullptr) != FALSE &&
         read != 0) {
    total += read;
  }
  CloseHandle(file);
  return total;
}

struct Row {
  const char* name;
  int parses;  // whole readings of the file that it takes
  std::function<void()> work;
};

}  // namespace

void MeasureStores(const std::wstring& libraryPath) {
  const print_system::DriverWords driver(libraryPath);
  const auto context = std::make_unique<UIContext>();
  const auto names = std::make_unique<NameList>();
  FillStores(*context);
  std::array<char16_t, kMaxPathUnits> path;
  GetSettingsFilePath(path);
  const wchar_t* file = win32::Wide(path.data());

  const std::function<void()> init = [] { InitSettingsFile(); };
  const std::function<void()> check = [&] { CheckSettingsFile(context.get()); };
  const std::function<void()> lists = [&] {
    FavoriteStore().List(*names);
    CustomPaperStore().List(*names);
    WatermarkStore().List(*names);
  };
  const std::function<void()> reads = [&] {
    for (int number = 0; number < 4; ++number) {
      FavoriteStore().Read(Name(number).c_str(), context.get());
    }
  };
  const std::vector<Row> rows = {
      {"Init, with its write", 1, init},
      {"version check", 1, check},
      {"three lists", 3, lists},
      {"four favourites read", 4, reads},
      {"all of a sheet", 9,
       [&] {
         init();
         check();
         lists();
         reads();
       }},
  };

  std::printf("\na sheet's store operations on a settings file of %u bytes\n",
              static_cast<unsigned>(ReadPlainly(file)));
  std::printf("%-24s %8s %10s %18s %8s\n", "operation", "parses", "us", "plain reads, us", "ratio");
  for (const Row& row : rows) {
    std::vector<double> ours;
    std::vector<double> plain;
    for (int round = 0; round < kRounds; ++round) {
      ours.push_back(Microseconds(row.work));
      plain.push_back(Microseconds([&] {
        for (int i = 0; i < row.parses; ++i) {
          ReadPlainly(file);
        }
      }));
    }
    std::printf("%-24s %8d %10.0f %18.0f %8.2f\n", row.name, row.parses, Median(ours),
                Median(plain), Median(ours) / Median(plain));
  }
}

}  // namespace ostrel::bench
