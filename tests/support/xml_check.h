// Whether a text is well-formed XML, as far as the files that are written here go: elements with
// quoted attributes, text, and the named entities. No comments, no declarations.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel::test {

class XmlCheck {
 public:
  explicit XmlCheck(std::string_view text) : left_(text) {}

  // What is wrong; empty for a well-formed text.
  std::string Fault() {
    if (!Element()) {
      return fault_;
    }
    SkipSpace();
    return left_.empty() ? "" : "text behind the root: " + Here();
  }

 private:
  bool Fail(const std::string& what) {
    if (fault_.empty()) {
      fault_ = what + " at: " + Here();
    }
    return false;
  }
  std::string Here() const { return std::string(left_.substr(0, 40)); }
  void SkipSpace() {
    left_.remove_prefix(std::min(left_.find_first_not_of(" \n\r\t"), left_.size()));
  }
  bool Take(std::string_view token) {
    if (!left_.starts_with(token)) {
      return false;
    }
    left_.remove_prefix(token.size());
    return true;
  }
  std::string Name() {
    const std::size_t end = left_.find_first_of(" \n\t=/><\"");
    const std::string name(left_.substr(0, end));
    left_.remove_prefix(std::min(end, left_.size()));
    return name;
  }
  // Characters up to one of the stops, with whole entities.
  bool Characters(std::string_view stops) {
    while (!left_.empty() && stops.find(left_.front()) == std::string_view::npos) {
      if (left_.front() == '&') {
        if (!Take("&amp;") && !Take("&lt;") && !Take("&gt;") && !Take("&quot;")) {
          return Fail("an unknown entity");
        }
        continue;
      }
      const auto byte = static_cast<unsigned char>(left_.front());
      if (byte == '<' || (byte < ' ' && byte != '\n' && byte != '\t')) {
        return Fail("a character that may not stand here");
      }
      left_.remove_prefix(1);
    }
    return left_.empty() ? Fail("the end") : true;
  }
  bool Attributes() {
    std::vector<std::string> names;
    for (SkipSpace(); !left_.empty() && left_.front() != '/' && left_.front() != '>'; SkipSpace()) {
      const std::string name = Name();
      if (name.empty() || std::ranges::find(names, name) != names.end()) {
        return Fail("an attribute without a name of its own");
      }
      names.push_back(name);
      if (!Take("=\"") || !Characters("\"") || !Take("\"")) {
        return Fail("an attribute without a value");
      }
    }
    return true;
  }
  bool Element() {
    if (!Take("<")) {
      return Fail("no element");
    }
    const std::string name = Name();
    if (name.empty() || !Attributes()) {
      return Fail("no element");
    }
    if (Take("/>")) {
      return true;
    }
    if (!Take(">")) {
      return Fail("an open start of an element");
    }
    while (Characters("<")) {
      if (Take("</" + name + ">")) {
        return true;
      }
      if (left_.starts_with("</") || !Element()) {
        return Fail("another element's end");
      }
    }
    return false;
  }

  std::string_view left_;
  std::string fault_;
};

}  // namespace ostrel::test
