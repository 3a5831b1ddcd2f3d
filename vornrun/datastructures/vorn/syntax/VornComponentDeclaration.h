#pragma once
/// \file
/// Component types: a name, a category and the ports.

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "vornrun/datastructures/vorn/syntax/VornPort.h"

namespace vornrun {

enum class VornComponentCategory : unsigned int {
    bus = 0,
    data = 1,
    device = 2,
    memory = 3,
    process = 4,
    processor = 5,
    system = 6,
    thread = 7,
    threadGroup = 8
};
/// Writes "bus" ... "thread", "threadGroup".
std::ostream& operator<<(std::ostream& stream, VornComponentCategory category);

/// Category names as they are looked up; the last one is written "thread group" here and printed as "threadGroup".
extern const std::unordered_map<std::string, VornComponentCategory> VornComponentCategoryNames;
/// \throws std::out_of_range for an unknown name
VornComponentCategory componentCategory(const std::string& name);

class VornComponentDeclaration final : public Vorn {
  public:
    using Features = std::map<std::string, std::unique_ptr<VornPort>>;

    /// Adopts the ports. Of two ports of one name the first stays; a WARN on "root.vornxml" names the second.
    VornComponentDeclaration(const std::string& name, VornComponentCategory category,
                             const std::vector<VornPort*>& features);

    const std::string& name() const noexcept { return mName; }
    VornComponentCategory category() const noexcept { return mCategory; }
    /// The ports by name.
    const Features& features() const noexcept { return mFeatures; }
    /// Borrowed. \throws std::invalid_argument "Unknown feature name " + name
    VornPort* featureByName(const std::string& name) const;
    void printVorn(std::ostream& stream) const override;

  private:
    std::string mName;
    VornComponentCategory mCategory;
    Features mFeatures;
};

}  // namespace vornrun
