#pragma once
/// \file
/// The roots of the realised model: what prints itself, and what has a number, a name and a parent.

#include <string>

#include "vornrun/datastructures/vorn/syntax/Realisation.h"

namespace vornrun {

/// A numbered, named node of the instance tree.
class RealisedIdentifier {
  public:
    /// A node without a parent.
    RealisedIdentifier(unsigned int id, std::string identifier);
    RealisedIdentifier(unsigned int id, const RealisedIdentifier* parent, std::string identifier);
    RealisedIdentifier(const RealisedIdentifier&) = delete;
    RealisedIdentifier& operator=(const RealisedIdentifier&) = delete;
    virtual ~RealisedIdentifier() = default;

    /// Numbers the parts of one kind inside a model, in the order in which they are made.
    unsigned int id() const noexcept { return mId; }
    /// Null for the root component.
    const RealisedIdentifier* parent() const noexcept { return mParent; }
    /// The local name.
    const std::string& identifier() const noexcept { return mIdentifier; }
    /// The names from the root down to this node, joined by ".".
    std::string fullIdentifier() const;

  private:
    unsigned int mId;
    const RealisedIdentifier* mParent;
    std::string mIdentifier;
};

}  // namespace vornrun
