#pragma once
/// \file
/// A textual reference of the form "sub.rest", split at the first dot.

#include <iosfwd>
#include <string>

namespace vornrun {

/// Names something of a component, or of a subcomponent when there is a dot.
class VornReference {
  public:
    explicit VornReference(const std::string& text);
    VornReference(const VornReference&) = default;
    VornReference& operator=(const VornReference&) = default;
    virtual ~VornReference() = default;

    /// The part before the first dot; empty without a dot.
    const std::string& subComponent() const noexcept { return mSubComponent; }
    /// The part after the first dot, further dots included; the whole text without a dot.
    const std::string& name() const noexcept { return mName; }
    bool isSub() const noexcept { return mIsSub; }

    /// The reference one level down: "b.c" of "a.b.c". A plain copy when there is no subcomponent part.
    VornReference getSubReference() const;
    /// The text as it was written.
    std::string text() const;

  private:
    std::string mSubComponent;
    std::string mName;
    bool mIsSub;
};

/// Writes the text as it was written.
std::ostream& operator<<(std::ostream& stream, const VornReference& reference);

}  // namespace vornrun
