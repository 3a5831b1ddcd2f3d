#pragma once
/// \file
/// Event connections of a component instance. Data connections are realised as flows.

#include "vornrun/datastructures/vorn/realisation/RealisedPort.h"
#include "vornrun/datastructures/vorn/syntax/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/VornConnection.h"

namespace vornrun {

class RealisedConnection final : public Realisation {
  public:
    /// Owns nothing. \pre no pointer is null \param modes the modes in which the connection exists; empty means all
    RealisedConnection(const RealisedEventPort* source, const RealisedEventPort* target,
                       const VornConnection* connection, ModeList modes);

    const RealisedEventPort* source() const noexcept { return mSource; }
    const RealisedEventPort* target() const noexcept { return mTarget; }
    const ModeList& modes() const noexcept { return mModes; }
    bool isPassive() const noexcept { return mConnection->passive(); }
    /// Of the source port.
    PortDirection direction() const noexcept { return mSource->direction(); }
    /// 0 for in to in (down to a subcomponent), 1 for out to in (between siblings), 2 for out to out (up to the
    /// parent). A check that is offered; running a model does not need it.
    /// \throws model_exception for in to out
    int connectionType() const;
    void print(std::ostream& stream) const override;

  private:
    const RealisedEventPort* mSource;
    const RealisedEventPort* mTarget;
    const VornConnection* mConnection;
    ModeList mModes;
};

}  // namespace vornrun
