// Several processes on one settings file, nothing locked between them, as the driver works in every
// application of a user at once: two save favourites as fast as they can, a third reads.
//
//   store_stress [SECONDS]
//
// Files may be lost to a last writer and records to a reader's luck; that is how the driver shares
// its file. What must hold: nobody crashes or grows, what is read is a whole file or what is left
// of one, and at the end the file can be made good, saved to and read back. Result: 0 if so.
#include "config/setting_stores.h"
#include "core/text.h"
#include "core/ui_context.h"
#include "stress_file.h"
#include "windows_world.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <psapi.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrel;
using namespace ostrel::peers;

constexpr int kFavoritesOfAWriter = 6;
constexpr SIZE_T kGrowthLimitBytes = SIZE_T{4} << 20;

// ---- Of each process ----------------------------------------------------------------------------

// The working set after a warm-up, and how far it grew from there.
class GrowthWatch {
 public:
  explicit GrowthWatch(ULONGLONG until) : start_(GetTickCount64()), until_(until) {}

  // Result: false when the time is over.
  bool GoOn() {
    const ULONGLONG now = GetTickCount64();
    if (base_ == 0 && now - start_ > (until_ - start_) / 5) {
      base_ = WorkingSet();
    }
    return now < until_;
  }
  SIZE_T base() const { return base_; }
  SIZE_T growth() const {
    const SIZE_T now = WorkingSet();
    return now > base_ ? now - base_ : 0;
  }

 private:
  static SIZE_T WorkingSet() {
    PROCESS_MEMORY_COUNTERS counters = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return counters.WorkingSetSize;
  }

  ULONGLONG start_;
  ULONGLONG until_;
  SIZE_T base_ = 0;
};

int TellGrowth(const std::string& who, const GrowthWatch& watch, const std::string& counts) {
  std::printf("%-8s %s; working set %lu KB, grown by %lu KB\n", who.c_str(), counts.c_str(),
              static_cast<unsigned long>(watch.base() / 1024),
              static_cast<unsigned long>(watch.growth() / 1024));
  return watch.growth() <= kGrowthLimitBytes ? 0 : 1;
}

std::u16string FavoriteName(int writer, int number) {
  return {u'W', static_cast<char16_t>(u'0' + writer), u' ', static_cast<char16_t>(u'a' + number)};
}

int Write(WindowsWorld& /*world*/, int writer, ULONGLONG until) {
  const FavoriteStore store;
  const auto context = std::make_unique<UIContext>();
  GrowthWatch watch(until);
  std::uint32_t saves = 0;
  std::uint32_t refused = 0;
  std::uint32_t notReady = 0;
  while (watch.GoOn()) {
    // As a page does: make the file ready, then save; now and then a favourite goes.
    notReady += InitSettingsFile() ? 0U : 1U;
    for (int number = 0; number < kFavoritesOfAWriter && watch.GoOn(); ++number) {
      PutStamp(std::as_writable_bytes(std::span(&context->devmode, 1)),
               Stamp(static_cast<std::uint32_t>(writer), ++saves));
      refused += store.Save(FavoriteName(writer, number).c_str(), *context) ? 0U : 1U;
    }
    store.Delete(FavoriteName(writer, static_cast<int>(saves / 7) % kFavoritesOfAWriter).c_str());
  }
  return TellGrowth("writer " + std::to_string(writer), watch,
                    std::to_string(saves) + " saves, " + std::to_string(refused) + " refused, " +
                        std::to_string(notReady) + " times no file to be had");
}

// The bytes of a file in one reading; empty when it can't be opened.
std::string ReadWhole(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return {};
  }
  std::string bytes(std::size_t{1} << 20, '\0');
  DWORD read = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  CloseHandle(file);
  bytes.resize(read);
  return bytes;
}

// The file between two writings: two readings in a row that agree. Without a value when others are
// busy with it.
std::optional<std::string> ReadAtRest(const std::wstring& path) {
  std::string first = ReadWhole(path);
  return ReadWhole(path) == first ? std::optional(std::move(first)) : std::nullopt;
}

// Whether the file was left like this: a writer that is at it just now would be done long before.
bool IsLeftBehind(const std::wstring& path, const std::string& file) {
  for (int wait = 0; wait < 500; ++wait) {
    Sleep(1);
    if (ReadWhole(path) != file) {
      return false;
    }
  }
  return true;
}

int Read(WindowsWorld& world, ULONGLONG until) {
  const std::wstring path = world.settingsPath();
  const FavoriteStore store;
  const auto context = std::make_unique<UIContext>();
  const auto names = std::make_unique<NameList>();
  GrowthWatch watch(until);
  std::array<std::uint32_t, kFileShapes> shapes = {};
  std::uint32_t favorites = 0;
  std::uint32_t inMotion = 0;
  std::string whyBroken;
  while (watch.GoOn()) {
    if (const std::optional<std::string> file = ReadAtRest(path)) {
      std::string why;
      const FileShape shape = ShapeOf(*file, &why);
      ++shapes[static_cast<std::size_t>(shape)];
      if (shape == FileShape::kBroken && IsLeftBehind(path, *file)) {
        whyBroken = why;
      }
    } else {
      ++inMotion;
    }
    const int count = store.List(*names);
    for (int i = 0; i < count; ++i) {
      favorites +=
          store.Read(names->rows[static_cast<std::size_t>(i)].data(), context.get()) ? 1U : 0U;
    }
  }
  std::string counts = std::to_string(inMotion) + " in motion, ";
  for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
    counts += std::to_string(shapes[shape]) + " " + NameOf(static_cast<FileShape>(shape)) + ", ";
  }
  const int result =
      TellGrowth("reader", watch, counts + std::to_string(favorites) + " favourites read");
  if (!whyBroken.empty()) {
    std::printf("reader: a file was left broken: %s\n", whyBroken.c_str());
    return 1;
  }
  return result;
}

// ---- The one that starts them -------------------------------------------------------------------

class Child {
 public:
  explicit Child(const std::wstring& arguments) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(program) + L"\" " + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    started_ = CreateProcessW(program, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                              &startup, &process_) != FALSE;
  }
  ~Child() {
    if (started_) {
      TerminateProcess(process_.hProcess, 3);  // nothing for one that has ended
      CloseHandle(process_.hThread);
      CloseHandle(process_.hProcess);
    }
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Result: whether it ended by itself, in time and content.
  bool Succeeded(DWORD limit_ms) const {
    DWORD code = 1;
    return started_ && WaitForSingleObject(process_.hProcess, limit_ms) == WAIT_OBJECT_0 &&
           GetExitCodeProcess(process_.hProcess, &code) != FALSE && code == 0;
  }

 private:
  PROCESS_INFORMATION process_ = {};
  bool started_;
};

// What the last writers left, and whether it can be made good.
int Judge(WindowsWorld& world) {
  std::string why;
  const FileShape shape = ShapeOf(ReadWhole(world.settingsPath()), &why);
  std::printf("at the end the file is %s\n", NameOf(shape));
  const FavoriteStore store;
  const auto context = std::make_unique<UIContext>();
  PutStamp(std::as_writable_bytes(std::span(&context->devmode, 1)), Stamp(9, 1));
  const bool usable = InitSettingsFile() && store.Save(u"Last", *context) &&
                      store.Read(u"Last", context.get()) && store.Delete(u"Last");
  if (!usable) {
    std::printf("and can't be used: %s\n", why.c_str());
  }
  return usable && shape != FileShape::kBroken ? 0 : 1;
}

int Lead(WindowsWorld& world, const std::wstring& folder, int seconds) {
  constexpr DWORD kPatience_ms = 30000;
  DeleteFileW(world.settingsPath().c_str());
  InitSettingsFile();
  int result = 0;
  {
    const std::wstring rest = L" " + std::to_wstring(seconds) + L" \"" + folder + L"\"";
    const std::vector<std::unique_ptr<Child>> children = [&rest] {
      std::vector<std::unique_ptr<Child>> started;
      for (const wchar_t* role : {L"1", L"2", L"reader"}) {
        started.push_back(std::make_unique<Child>(role + rest));
      }
      return started;
    }();
    for (const auto& child : children) {
      if (!child->Succeeded(static_cast<DWORD>(seconds) * 1000 + kPatience_ms)) {
        std::printf("a process did not end well\n");
        result = 1;
      }
    }
  }
  result |= Judge(world);
  std::printf("stress: %d seconds, %s\n", seconds, result == 0 ? "good" : "NOT good");
  return result;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  wchar_t temporary[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, temporary);
  const bool isChild = count == 4;
  const std::wstring_view role = isChild ? arguments[1] : L"";
  const std::wstring folder = isChild ? arguments[3] : std::wstring(temporary) + L"store stress";
  const wchar_t* time = isChild ? arguments[2] : count > 1 ? arguments[1] : L"5";
  const int seconds = std::max(1, static_cast<int>(std::wcstol(time, nullptr, 10)));

  CreateDirectoryW(folder.c_str(), nullptr);
  WindowsWorld world(folder);
  const ULONGLONG until = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1000;
  int result = 0;
  if (role == L"reader") {
    result = Read(world, until);
  } else if (isChild) {
    result = Write(world, role == L"1" ? 1 : 2, until);
  } else {
    result = Lead(world, folder, seconds);
  }
  std::fflush(stdout);
  return result;
}
