#pragma once
/// \file
/// Names the instances of table-driven tests after a field `name` of the case.

#include <gtest/gtest.h>

#include <string>

namespace vornrun::test {

/// The last argument of INSTANTIATE_TEST_SUITE_P.
struct CaseName {
    template <class Case>
    std::string operator()(const testing::TestParamInfo<Case>& instance) const {
        return instance.param.name;
    }
};

}  // namespace vornrun::test
