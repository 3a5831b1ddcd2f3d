#pragma once
/// \file
/// The walk over formulas by class.

namespace vornrun {

class CSLAbstractBinaryStateFormula;
class CSLAbstractUnaryStateFormula;
class CSLFalse;
class CSLFormula;
class CSLNextPathFormula;
class CSLProbabilityStateFormula;
class CSLPropositionStateFormula;
class CSLTrue;
class CSLUntilPathFormula;

/// One operation per class; the operators share that of their abstract base. Each returns the new formula, owned by
/// the caller.
class PropertyVisitor {
  public:
    virtual ~PropertyVisitor() = default;
    virtual CSLFormula* visit(const CSLAbstractBinaryStateFormula* formula) = 0;
    virtual CSLFormula* visit(const CSLAbstractUnaryStateFormula* formula) = 0;
    virtual CSLFormula* visit(const CSLPropositionStateFormula* formula) = 0;
    virtual CSLFormula* visit(const CSLProbabilityStateFormula* formula) = 0;
    virtual CSLFormula* visit(const CSLTrue* formula) = 0;
    virtual CSLFormula* visit(const CSLFalse* formula) = 0;
    virtual CSLFormula* visit(const CSLUntilPathFormula* formula) = 0;
    virtual CSLFormula* visit(const CSLNextPathFormula* formula) = 0;
};

}  // namespace vornrun
