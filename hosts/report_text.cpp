#include "print_system_setup.h"
#include "report_output.h"
#include "text_table.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace ostrel::report {
namespace {

using print_system::Utf8;

std::string Millimetres(std::int32_t tenths_mm) {
  return std::to_string(tenths_mm / 10) + "." + std::to_string(tenths_mm % 10);
}

std::string Hexadecimal(std::uint32_t value) {
  char text[16] = {};
  std::snprintf(text, sizeof(text), "0x%08lX", static_cast<unsigned long>(value));
  return text;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : ", ") + word;
  }
  return text;
}

std::string PapersText(const std::vector<Paper>& papers) {
  Table table({kRight, kRight, kRight, kLeft});
  table.Row({"id", "width mm", "length mm", "name"});
  for (const Paper& paper : papers) {
    table.Row({std::to_string(paper.id), Millimetres(paper.width_tenths_mm),
               Millimetres(paper.length_tenths_mm), Utf8(paper.name)});
  }
  return Heading("Papers (" + std::to_string(papers.size()) + ")") + table.Text();
}

std::string BinsText(const std::vector<Bin>& bins) {
  Table table({kRight, kLeft});
  table.Row({"id", "name"});
  for (const Bin& bin : bins) {
    table.Row({std::to_string(bin.id), Utf8(bin.name)});
  }
  return Heading("Sources (" + std::to_string(bins.size()) + ")") + table.Text();
}

// Names side by side, as many in a line as are read at a glance.
std::string MediaReadyText(const std::vector<std::wstring>& names) {
  constexpr std::size_t kPerLine = 4;
  Table table(std::vector<Table::Side>(kPerLine, kLeft));
  for (std::size_t first = 0; first < names.size(); first += kPerLine) {
    std::vector<std::string> cells;
    for (std::size_t index = first; index < std::min(first + kPerLine, names.size()); ++index) {
      cells.push_back(Utf8(names[index]));
    }
    table.Row(cells);
  }
  return Heading("Media ready (" + std::to_string(names.size()) + ")") + table.Text();
}

std::string NumbersText(const Capabilities& all) {
  Table table({kLeft, kLeft});
  std::vector<std::string> resolutions;
  for (const Resolution& each : all.resolutions) {
    resolutions.push_back(std::to_string(each.x_dpi) + " x " + std::to_string(each.y_dpi));
  }
  const auto extent = [](const Extent& size) {
    return Millimetres(size.width_tenths_mm) + " x " + Millimetres(size.length_tenths_mm);
  };
  table.Row({"resolutions, dpi", Joined(resolutions)});
  table.Row({"smallest paper, mm", extent(all.minExtent)});
  table.Row({"largest paper, mm", extent(all.maxExtent)});
  for (const NumberAnswer& number : all.numbers) {
    table.Row({number.name, std::to_string(number.answer)});
  }
  table.Row({"fields of the record", Hexadecimal(all.fields)});
  return Heading("Abilities") + table.Text() + "    " + Joined(all.fieldNames) + "\n";
}

std::string UnknownText(const std::vector<NumberAnswer>& unknown) {
  Table table({kRight, kLeft, kRight});
  table.Row({"code", "name", "answer"});
  for (const NumberAnswer& row : unknown) {
    table.Row({std::to_string(row.code), row.name, std::to_string(row.answer)});
  }
  return Heading("Codes that this driver leaves open") + table.Text();
}

std::string DocumentAnswersText(const DocumentAnswers& all) {
  Table calls({kLeft, kRight});
  calls.Row({"how many bytes has a record?", std::to_string(all.size_bytes)});
  calls.Row({"give me the printer's record", std::to_string(all.defaultResult)});
  calls.Row({"take this one and give it back in order", std::to_string(all.repairResult)});

  Table fields({kLeft, kLeft, kRight, kRight, kLeft});
  fields.Row({"record", "field", "sent", "received", ""});
  for (const FieldChange& change : all.changes) {
    fields.Row({change.record, change.field, Utf8(change.sent), Utf8(change.received),
                change.repaired ? "<- repaired" : ""});
  }
  return Heading("Document properties: questions and results") + calls.Text() +
         Heading("A record with wrong values, and what came back") + fields.Text();
}

std::string KeptText(const KeptState& kept) {
  const auto remark = [](bool said, const char* words) { return said ? words : ""; };
  std::vector<std::string> trays;
  for (std::size_t tray = 0; tray < kept.optionalTrays.size(); ++tray) {
    trays.push_back("tray " + std::to_string(tray + 2) +
                    (kept.optionalTrays[tray] ? " fitted" : " missing"));
  }
  std::vector<std::string> sources;
  for (const Bin& source : kept.sources) {
    sources.push_back(Utf8(source.name));
  }
  Table table({kLeft, kLeft});
  table.Row({"model", kept.model.empty() ? "none chosen" : Utf8(kept.model)});
  table.Row(
      {"family", kept.family + ", " + Hexadecimal(static_cast<std::uint32_t>(kept.familyFlags))});
  table.Row({"language", std::to_string(kept.languageId) + ", suffix " + Utf8(kept.languageSuffix) +
                             ": " + Utf8(kept.languageLibrary) +
                             remark(kept.decimalComma, ", decimal comma") +
                             remark(kept.rightToLeft, ", right to left")});
  table.Row({"optional trays", Joined(trays)});
  table.Row({"sources with them", Joined(sources)});
  table.Row({"settings file", Utf8(kept.settingsFile)});

  Table papers({kRight, kRight, kRight, kLeft});
  papers.Row({"id", "width mm", "length mm", "name"});
  for (const Paper& paper : kept.customPapers) {
    papers.Row({std::to_string(paper.id), Millimetres(paper.width_tenths_mm),
                Millimetres(paper.length_tenths_mm), Utf8(paper.name)});
  }
  return Heading("What is kept for the printer and its user") + table.Text() +
         Heading("Custom papers in the settings file (" + std::to_string(kept.customPapers.size()) +
                 ")") +
         papers.Text();
}

std::string DirectAnswersText(const std::vector<DirectAnswer>& answers) {
  Table table({kLeft, kLeft, kLeft});
  for (const DirectAnswer& row : answers) {
    table.Row({row.entryPoint, row.question, row.answer});
  }
  return Heading("Asked of the driver directly") + table.Text();
}

}  // namespace

std::string TextReport(const PrinterReport& report) {
  Table head({kLeft, kLeft});
  head.Row({"printer", Utf8(report.printerName)});
  head.Row({"driver", Utf8(report.driverName)});
  head.Row({"library", Utf8(report.configLibrary)});
  return "What the print system says about a printer with this driver\n" + head.Text() +
         KeptText(report.kept) + PapersText(report.capabilities.papers) +
         MediaReadyText(report.capabilities.mediaReady) + BinsText(report.capabilities.bins) +
         NumbersText(report.capabilities) + UnknownText(report.capabilities.unknown) +
         DocumentAnswersText(report.documentAnswers) + DirectAnswersText(report.directAnswers);
}

}  // namespace ostrel::report
