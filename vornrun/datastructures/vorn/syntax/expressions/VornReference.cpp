#include "vornrun/datastructures/vorn/syntax/expressions/VornReference.h"

#include <ostream>

namespace vornrun {

VornReference::VornReference(const std::string& text) : mName(text), mIsSub(false) {
    const auto dot = text.find('.');
    if (dot == std::string::npos) return;
    mSubComponent = text.substr(0, dot);
    mName = text.substr(dot + 1);
    mIsSub = true;
}

VornReference VornReference::getSubReference() const { return mIsSub ? VornReference(mName) : *this; }

std::string VornReference::text() const { return mIsSub ? mSubComponent + "." + mName : mName; }

std::ostream& operator<<(std::ostream& stream, const VornReference& reference) {
    if (reference.isSub()) stream << reference.subComponent() << ".";
    return stream << reference.name();
}

}  // namespace vornrun
