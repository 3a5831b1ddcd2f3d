#pragma once
/// \file
/// A question about the traces of a model: a path formula of Continuous Stochastic Logic.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/api/Fault.h"

namespace vornrun {

class CSLFormula;
class CSLPathFormula;

/// Immutable: threads may share one, and a copy is cheap. Names in it are resolved when a Runner takes it on.
class Question {
  public:
    /// The questions of a property file, in file order. Formulas of a kind that is not checked are left out.
    /// \throws FaultException with all that was found, also for a file without any question
    static std::vector<Question> fromFile(const std::string& path);
    /// The question for a path formula, or for the path formula of a probability formula. The formula stays the
    /// caller's.
    /// \throws FaultException for a formula of another kind
    static Question fromFormula(const CSLFormula& formula);

    /// The formula as text, with the probability operator and its bound where there is one.
    const std::string& text() const noexcept;
    /// What a trace satisfies or not; owned by the question.
    const CSLPathFormula& path() const noexcept;
    /// The whole formula as it was given; owned by the question.
    const CSLFormula& formula() const noexcept;

  private:
    struct Data;
    explicit Question(std::shared_ptr<const Data> data);

    std::shared_ptr<const Data> mData;
};

}  // namespace vornrun
