// A world with a context of default settings and the English texts, and a recorded dialog whose
// window remembers that context.
#pragma once

#include "core/settings_record.h"
#include "core/ui_context.h"
#include "support/dialog_recorder.h"
#include "support/test_world.h"

#include <string>

namespace ostrel::test {

struct PageScene {
  PageScene() {
    InitDriverDevmode(&context.devmode, kPrinterName, nullptr);
    context.publicPointer = &context.devmode.publicDevmode;
    context.privatePointer = &context.devmode.privateDevmode;
    context.languageModule = world.platform.modules.LoadLibraryW(kEnglishLibraryPath);
    std::u16string(kDriverName).copy(context.driverName, kDriverNameUnits - 1);
    dialog.userData = reinterpret_cast<std::intptr_t>(&context);
  }
  PageScene(const PageScene&) = delete;
  PageScene& operator=(const PageScene&) = delete;

  // Puts a library with these texts alone in the place of the English one.
  void UseTexts(headless::StringTable texts) {
    world.platform.modules.Install(kTextsPath, std::move(texts));
    context.languageModule = world.platform.modules.LoadLibraryW(kTextsPath);
  }

  PublicDevmode& shared() { return context.devmode.publicDevmode; }
  PrivateDevmode& own() { return context.devmode.privateDevmode; }
  std::u16string English(std::uint32_t id) const { return EnglishStrings().at(id); }

  TestWorld world;
  DialogRecorder dialog{world};
  UIContext context = {};

 private:
  static constexpr char16_t kTextsPath[] = u"C:\\texts.dll";
};

}  // namespace ostrel::test
