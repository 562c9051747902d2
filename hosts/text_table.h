// Tables for people, in plain text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace ostrel::report {

// A table whose columns are as wide as their widest cell. Cells are plain characters: the driver's
// own names and numbers.
class Table {
 public:
  enum class Side { kLeft, kRight };

  explicit Table(std::vector<Side> sides) : sides_(std::move(sides)), widths_(sides_.size(), 0) {}

  void Row(std::vector<std::string> cells) {
    cells.resize(widths_.size());
    for (std::size_t column = 0; column < cells.size(); ++column) {
      widths_[column] = std::max(widths_[column], cells[column].size());
    }
    rows_.push_back(std::move(cells));
  }

  std::string Text() const {
    std::string text;
    for (const auto& row : rows_) {
      std::string line = " ";
      for (std::size_t column = 0; column < row.size(); ++column) {
        const std::string padding(widths_[column] - row[column].size(), ' ');
        line += sides_[column] == Side::kLeft ? " " + row[column] + padding + " "
                                              : " " + padding + row[column] + " ";
      }
      text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
  }

 private:
  std::vector<Side> sides_;
  std::vector<std::size_t> widths_;
  std::vector<std::vector<std::string>> rows_;
};

inline constexpr Table::Side kLeft = Table::Side::kLeft;
inline constexpr Table::Side kRight = Table::Side::kRight;

inline std::string Heading(const std::string& text) {
  return "\n" + text + "\n";
}

}  // namespace ostrel::report
