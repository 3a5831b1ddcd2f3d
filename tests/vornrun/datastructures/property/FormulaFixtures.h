#pragma once
/// \file
/// Formulas with scripted verdicts, and short ways to write formulas. What is made is owned by whoever takes it.

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "vornrun/datastructures/property/CSLBinaryStateFormula.h"
#include "vornrun/datastructures/property/CSLConstantStateFormula.h"
#include "vornrun/datastructures/property/CSLNextPathFormula.h"
#include "vornrun/datastructures/property/CSLProbabilityStateFormula.h"
#include "vornrun/datastructures/property/CSLPropositionStateFormula.h"
#include "vornrun/datastructures/property/CSLUnaryStateFormula.h"
#include "vornrun/datastructures/property/CSLUntilPathFormula.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornVariable.h"

namespace vornrun::test {

/// One evaluation of a scripted formula.
struct Asked {
    std::string name;
    RunContext* run;
    bool shallow;

    friend bool operator==(const Asked&, const Asked&) = default;
};

inline void PrintTo(const Asked& asked, std::ostream* stream) {
    *stream << asked.name << (asked.shallow ? " shallow" : " deep");
}

/// Answers with a fixed verdict and writes down that it was asked.
class ScriptedFormula final : public CSLStateFormula {
  public:
    ScriptedFormula(std::string name, PropertyResult verdict, std::vector<Asked>& journal)
        : mName(std::move(name)), mVerdict(verdict), mJournal(journal) {}

    PropertyResult evaluate(RunContext* run, bool shallow) const override {
        mJournal.push_back({mName, run, shallow});
        return mVerdict;
    }
    ScriptedFormula* clone() const override { return new ScriptedFormula(mName, mVerdict, mJournal); }
    std::ostream& printFormula(std::ostream& stream) const override { return stream << mName; }
    CSLFormula* accept(PropertyVisitor&) const override { return clone(); }

  private:
    std::string mName;
    PropertyResult mVerdict;
    std::vector<Asked>& mJournal;
};

inline CSLPropositionStateFormula* proposition(const std::string& variable) {
    return new CSLPropositionStateFormula(new TypedVornVariable<VornBool>(variable));
}

inline std::string text(const CSLFormula& formula) {
    std::ostringstream stream;
    stream << formula;
    return stream.str();
}

}  // namespace vornrun::test
