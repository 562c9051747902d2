#include "print_system_setup.h"
#include "report_output.h"

#include <nlohmann/json.hpp>

namespace ostrel::report {
namespace {

using Json = nlohmann::ordered_json;
using print_system::Utf8;

Json Numbers(const std::vector<NumberAnswer>& numbers) {
  Json list = Json::array();
  for (const NumberAnswer& number : numbers) {
    list.push_back({{"name", number.name}, {"code", number.code}, {"answer", number.answer}});
  }
  return list;
}

Json ExtentJson(const Extent& extent) {
  return {{"width_tenths_mm", extent.width_tenths_mm},
          {"length_tenths_mm", extent.length_tenths_mm}};
}

Json PapersJson(const std::vector<Paper>& papers) {
  Json list = Json::array();
  for (const Paper& paper : papers) {
    list.push_back({{"id", paper.id},
                    {"width_tenths_mm", paper.width_tenths_mm},
                    {"length_tenths_mm", paper.length_tenths_mm},
                    {"name", Utf8(paper.name)}});
  }
  return list;
}

Json CapabilitiesJson(const Capabilities& all) {
  Json mediaReady = Json::array();
  for (const std::wstring& name : all.mediaReady) {
    mediaReady.push_back(Utf8(name));
  }
  Json bins = Json::array();
  for (const Bin& bin : all.bins) {
    bins.push_back({{"id", bin.id}, {"name", Utf8(bin.name)}});
  }
  Json resolutions = Json::array();
  for (const Resolution& each : all.resolutions) {
    resolutions.push_back({{"x_dpi", each.x_dpi}, {"y_dpi", each.y_dpi}});
  }
  return {{"fields", all.fields},
          {"fieldNames", all.fieldNames},
          {"papers", PapersJson(all.papers)},
          {"mediaReady", mediaReady},
          {"bins", bins},
          {"resolutions", resolutions},
          {"minExtent", ExtentJson(all.minExtent)},
          {"maxExtent", ExtentJson(all.maxExtent)},
          {"numbers", Numbers(all.numbers)},
          {"unknown", Numbers(all.unknown)}};
}

Json KeptJson(const KeptState& kept) {
  Json sources = Json::array();
  for (const Bin& source : kept.sources) {
    sources.push_back({{"id", source.id}, {"name", Utf8(source.name)}});
  }
  return {{"model", Utf8(kept.model)},
          {"familyFlags", kept.familyFlags},
          {"family", kept.family},
          {"languageId", kept.languageId},
          {"languageSuffix", Utf8(kept.languageSuffix)},
          {"languageLibrary", Utf8(kept.languageLibrary)},
          {"decimalComma", kept.decimalComma},
          {"rightToLeft", kept.rightToLeft},
          {"optionalTrays", kept.optionalTrays},
          {"sources", sources},
          {"settingsFile", Utf8(kept.settingsFile)},
          {"customPapers", PapersJson(kept.customPapers)}};
}

Json DocumentAnswersJson(const DocumentAnswers& all) {
  Json changes = Json::array();
  for (const FieldChange& change : all.changes) {
    changes.push_back({{"record", change.record},
                       {"field", change.field},
                       {"sent", Utf8(change.sent)},
                       {"received", Utf8(change.received)},
                       {"repaired", change.repaired}});
  }
  return {{"size_bytes", all.size_bytes},
          {"defaultResult", all.defaultResult},
          {"repairResult", all.repairResult},
          {"changes", changes}};
}

Json DirectAnswersJson(const std::vector<DirectAnswer>& answers) {
  Json list = Json::array();
  for (const DirectAnswer& row : answers) {
    list.push_back(
        {{"entryPoint", row.entryPoint}, {"question", row.question}, {"answer", row.answer}});
  }
  return list;
}

}  // namespace

std::string JsonReport(const PrinterReport& report) {
  const Json whole = {{"printerName", Utf8(report.printerName)},
                      {"driverName", Utf8(report.driverName)},
                      {"configLibrary", Utf8(report.configLibrary)},
                      {"kept", KeptJson(report.kept)},
                      {"capabilities", CapabilitiesJson(report.capabilities)},
                      {"documentAnswers", DocumentAnswersJson(report.documentAnswers)},
                      {"directAnswers", DirectAnswersJson(report.directAnswers)}};
  return whole.dump(2) + "\n";
}

}  // namespace ostrel::report
