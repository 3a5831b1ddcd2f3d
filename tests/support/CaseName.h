#pragma once
/// \file
/// Names for the instances of table-driven tests.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace vornrun::test {

/// Names each instance after the field `name` of its case. The last argument of INSTANTIATE_TEST_SUITE_P.
struct CaseName {
    template <class Case>
    std::string operator()(const testing::TestParamInfo<Case>& instance) const {
        return instance.param.name;
    }
};

/// Names the instances in their order, for cases that are plain values. Needs a name for each case.
class NamesInOrder {
  public:
    NamesInOrder(std::initializer_list<const char*> names) : mNames(names.begin(), names.end()) {}

    template <class Case>
    std::string operator()(const testing::TestParamInfo<Case>& instance) const {
        return mNames.at(instance.index);
    }

  private:
    std::vector<std::string> mNames;
};

}  // namespace vornrun::test
