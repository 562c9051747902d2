// Prints the sample document on the in-memory platform, with the settings of files, and leaves each
// page as a picture:
//
//   print_document_svg [--right-to-left] FOLDER FILE...
//                                       a job for each file of settings; the pages are left in the
//                                       folder as FILE_1.svg and so on
//
// The driver's own events and stamp, without a print system: the same job as print_document's.
// Result: 0, or 1 with a line on the standard error when something failed.
#include "core/text.h"
#include "job/document_events.h"
#include "job_settings.h"
#include "platform/headless/svg_page.h"
#include "print_job.h"
#include "render_driver/render_driver.h"
#include "sample_document.h"
#include "support/test_world.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace ostrel;
using headless::DrawSvg;
using headless::PrinterDevice;
namespace fs = std::filesystem;

constexpr char16_t kJobsFolder[] = u"C:\\jobs\\";
constexpr Size kA4_px600 = {4960, 7015};

std::string ContentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file.is_open()) {
    throw std::runtime_error("no file " + path.string());
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

// The settings of a file, repaired as a record of the application is. What they name beside the
// file is put where the driver looks for it.
DriverDevmode RecordOf(test::TestWorld& world, const fs::path& path) {
  DriverDevmode record = {};
  InitDriverDevmode(&record, test::kDriverName, test::kDriverName);
  ApplyJobSettings(record, ContentOf(path), kJobsFolder);
  ValidatePrivateDevmode(&record.privateDevmode);
  const std::u16string picture(FieldText(record.privateDevmode.WatermarkData.PageWMFileName));
  if (picture.starts_with(kJobsFolder)) {
    const std::string bytes =
        ContentOf(path.parent_path() / picture.substr(std::u16string_view(kJobsFolder).size()));
    const auto content = std::as_bytes(std::span(bytes));
    world.platform.files.Put(picture, {content.begin(), content.end()});
  }
  return record;
}

// About as wide as the letters of a usual font are, and as high with what hangs below them.
Size MeasuredInArial(const LogFont& font, std::u16string_view text) {
  constexpr std::int32_t kHundredths = 100;
  const std::int32_t height = std::abs(font.lfHeight);
  std::int32_t width = 0;
  for (const char16_t unit : text) {
    const bool isNarrow =
        std::u16string_view(u"filjtI.,:;!|' ").find(unit) != std::u16string_view::npos;
    const bool isWide = (unit >= u'A' && unit <= u'Z') || unit == u'm' || unit == u'w';
    width += isNarrow ? 28 : isWide ? 70 : 55;
  }
  return {width * height / kHundredths, height * 112 / kHundredths};
}

class SvgJob final : public JobSystem {
 public:
  SvgJob(test::TestWorld& world, const DriverDevmode& record, fs::path stem)
      : world_(world),
        stem_(std::move(stem)),
        printer_(world.OpenPrinter()),
        driver_(record.privateDevmode, [this](Point origin) {
          world_.platform.graphics.MoveDeviceOrigin(context_, origin);
        }) {
    device_.page = kA4_px600;
    device_.onEscape = [this](std::int32_t code, std::span<const std::byte> input,
                              std::span<std::byte> output) {
      return driver_.Escape(code, input, output);
    };
  }
  ~SvgJob() override { world_.platform.print.ClosePrinter(printer_); }

  std::int32_t Raise(JobEvent event, DeviceContext context) override {
    return DrvDocumentEvent({.hPrinter = printer_,
                             .hdc = context,
                             .iEsc = static_cast<std::int32_t>(event),
                             .cbIn = 0,
                             .pvIn = nullptr,
                             .cbOut = 0,
                             .pvOut = nullptr});
  }
  DeviceContext CreateContext() override {
    return context_ = world_.platform.graphics.OpenPrinter(device_);
  }
  bool BeginDocument(DeviceContext /*context*/) override { return true; }
  bool BeginPage(DeviceContext /*context*/) override {
    device_.operations.clear();
    return true;
  }
  bool FinishPage(DeviceContext /*context*/) override {
    const std::string number = "_" + std::to_string(driver_.page()) + ".svg";
    std::ofstream file(stem_.string() + number, std::ios::binary);
    file << DrawSvg(device_, &MeasuredInArial);
    return file.good();
  }
  bool FinishDocument(DeviceContext /*context*/) override { return true; }
  void DeleteContext(DeviceContext context) override { world_.platform.graphics.DeleteDC(context); }

 private:
  test::TestWorld& world_;
  fs::path stem_;
  PrinterHandle printer_;
  neighbours::RenderDriver driver_;
  PrinterDevice device_;
  DeviceContext context_ = nullptr;
};

void Print(const fs::path& settings, const fs::path& folder, bool isRightToLeft) {
  test::TestWorld world;
  world.platform.modules.Install(world.platform.print.driverDirectory + u"\\3\\olunidrvui.dll");
  const DriverDevmode record = RecordOf(world, settings);
  world.process.RightToLeftLanguage = isRightToLeft;
  SvgJob job(world, record, folder / settings.stem());
  world.platform.graphics.measureText = &MeasuredInArial;
  Graphics& graphics = world.platform.graphics;
  const JobResult result = PrintJob(
      job, kSamplePages,
      [&graphics](DeviceContext context, int page) { DrawSamplePage(graphics, context, page); });
  if (result != JobResult::kPrinted) {
    throw std::runtime_error("not printed: " + settings.string());
  }
}

int Run(std::vector<std::string> arguments) {
  const bool isRightToLeft = !arguments.empty() && arguments.front() == "--right-to-left";
  if (isRightToLeft) {
    arguments.erase(arguments.begin());
  }
  if (arguments.size() < 2) {
    std::fputs("print_document_svg [--right-to-left] FOLDER FILE...\n", stderr);
    return 2;
  }
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    Print(arguments[i], arguments[0], isRightToLeft);
  }
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run({arguments + 1, arguments + count});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "print_document_svg: %s\n", error.what());
    return 1;
  }
}
