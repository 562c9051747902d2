#include "support/test_world.h"

#include "core/ui_context.h"

#include <fstream>
#include <iterator>
#include <map>
#include <span>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace ostrel::test {
namespace {

// The compiled form of a library of resources: a language's, or "ResBmp".
std::vector<std::byte> ReadResourceFile(const std::string& language) {
  const std::string path = OSTREL_COMPILED_RESOURCES "/ostrelPCL6ui" + language + ".res";
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("missing " + path);
  }
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
  const auto view = std::as_bytes(std::span(bytes));
  return {view.begin(), view.end()};
}

std::string unfreed;

}  // namespace

const std::vector<std::string>& Languages() {
  static const std::vector<std::string> languages = [] {
    std::istringstream words(OSTREL_LANGUAGES);
    return std::vector<std::string>(std::istream_iterator<std::string>(words), {});
  }();
  return languages;
}

const headless::StringTable& Strings(std::string_view language) {
  static std::map<std::string, headless::StringTable> tables;
  const std::string suffix(language);
  if (const auto known = tables.find(suffix); known != tables.end()) {
    return known->second;
  }
  return tables.emplace(suffix, headless::ReadStringTable(ReadResourceFile(suffix))).first->second;
}

const std::vector<std::byte>& EnglishResourceFile() {
  static const std::vector<std::byte> file = ReadResourceFile("enus");
  return file;
}

std::shared_ptr<const headless::Resources> LibraryResources(std::string_view suffix) {
  static std::map<std::string, std::shared_ptr<const headless::Resources>> libraries;
  std::shared_ptr<const headless::Resources>& library = libraries[std::string(suffix)];
  if (library == nullptr) {
    library = std::make_shared<const headless::Resources>(
        headless::ReadResources(ReadResourceFile(std::string(suffix))));
  }
  return library;
}

TestWorld::TestWorld()
    : pageStates(static_cast<PageStateTable*>(std::calloc(1, sizeof(PageStateTable))), &std::free) {
  process.platform = &platform.lists;
  process.PageStates = pageStates.get();
  platform.locale.country = u"49";
  platform.modules.Install(kLibraryPath);
  platform.modules.InstallResources(kEnglishLibraryPath, LibraryResources("enus"));
  platform.modules.InstallResources(kBitmapLibraryPath, LibraryResources("ResBmp"));
  process.LibraryModule = platform.modules.LoadLibraryW(kLibraryPath);
  printer = &platform.print.AddPrinter({.name = kPrinterName, .driverName = kDriverName});
}

void TestWorld::FreeWhatLivesToTheEnd() {
  FreeUIContext(std::exchange(process.DefaultContextCopy, nullptr));
  if (platform.memory.liveBlocks() != 0) {  // the walk through the table is long
    ReleaseAllPageStates();
  }
}

TestWorld::~TestWorld() {
  FreeWhatLivesToTheEnd();
  if (platform.memory.liveBlocks() != 0) {
    unfreed += std::to_string(platform.memory.liveBlocks()) + " blocks; ";
  }
}

std::string TakeUnfreed() {
  return std::exchange(unfreed, {});
}

headless::StoredValues& TestWorld::UserValues(std::u16string_view subkey) {
  return platform.registry.Values(std::u16string(kUserStore).append(subkey));
}

PrinterHandle TestWorld::OpenPrinter() {
  PrinterHandle handle = nullptr;
  platform.print.OpenPrinterW(kPrinterName, &handle, nullptr);
  return handle;
}

std::string TestWorld::Leftovers(std::size_t expectedLoads) {
  FreeWhatLivesToTheEnd();
  std::string left;
  const auto report = [&left](const char* what, std::size_t count, std::size_t expected) {
    if (count != expected) {
      left += std::to_string(count) + " " + what + " instead of " + std::to_string(expected) + "; ";
    }
  };
  report("blocks", platform.memory.liveBlocks(), 0);
  report("library loads", platform.modules.loads(), expectedLoads + 1);  // and this library itself
  report("open printers", platform.print.openPrinters(), 0);
  report("open files", platform.files.openFiles(), 0);
  report("open registry keys", platform.registry.openKeys(), 0);
  report("open tokens", platform.security.openTokens(), 0);
  report("texts of the security list", platform.security.liveTexts(), 0);
  report("bitmaps", platform.graphics.liveBitmaps(), 0);
  report("device contexts", platform.graphics.liveContexts(), 0);
  report("windows", platform.windows.liveWindows(), 0);
  // A program that was started is left alone, and so are its handles.
  report("process handles", platform.system.liveProcessHandles(),
         platform.system.startedProcesses.size() * headless::HeadlessSystem::kHandlesPerProcess);
  return left;
}

}  // namespace ostrel::test
