// The name of a table-driven case: the `name` of its row.
#pragma once

#include <gtest/gtest.h>
#include <string>

namespace ostrel::test {

struct CaseName {
  template <typename Row>
  std::string operator()(const testing::TestParamInfo<Row>& row) const {
    return row.param.name;
  }
};

}  // namespace ostrel::test
