#include "vornrun/datastructures/vorn/realisation/RealisedConnection.h"

#include <cassert>
#include <ostream>
#include <sstream>

#include "vornrun/datastructures/vorn/realisation/ModelException.h"

namespace vornrun {

RealisedConnection::RealisedConnection(const RealisedEventPort* source, const RealisedEventPort* target,
                                       const VornConnection* connection, ModeList modes)
    : mSource(source), mTarget(target), mConnection(connection), mModes(std::move(modes)) {
    assert(mSource != nullptr && mTarget != nullptr && mConnection != nullptr);
}

int RealisedConnection::connectionType() const {
    const bool fromIn = mSource->direction() == PortDirection::in;
    const bool toIn = mTarget->direction() == PortDirection::in;
    if (fromIn && !toIn) {
        std::ostringstream text;
        text << "Model contains In-to-Out port connection from " << static_cast<const Realisation&>(*mSource) << " to "
             << static_cast<const Realisation&>(*mTarget);
        throw model_exception(text.str());
    }
    if (fromIn) return 0;
    return toIn ? 1 : 2;
}

void RealisedConnection::print(std::ostream& stream) const {
    stream << "[" << mSource->id() << "] -> [" << mTarget->id() << "] (" << *mConnection << ")";
}

}  // namespace vornrun
