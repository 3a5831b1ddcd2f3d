#pragma once
/// \file
/// Ports of a component instance.

#include <memory>

#include "vornrun/datastructures/vorn/realisation/RealisedPart.h"
#include "vornrun/datastructures/vorn/syntax/VornPort.h"

namespace vornrun {

/// Ids of the port declarations that realisation makes itself: for the implicit port "reset", the private port "tau" of
/// each transition without a trigger, and the port "@activation" of reactivation transitions.
inline constexpr unsigned int RESET_PORT_ID = static_cast<unsigned int>(-1);
inline constexpr unsigned int TAU_PORT_ID = static_cast<unsigned int>(-2);
inline constexpr unsigned int ACTIVATION_PORT_ID = static_cast<unsigned int>(-3);

class RealisedPort : public RealisedPart, public Realisation {
  public:
    RealisedPort(unsigned int id, const VornComponentRealisation* component, const VornPort* port);
    /// The declaration; not owned.
    virtual const VornPort* realises() const = 0;
    PortDirection direction() const noexcept { return mDirection; }

  private:
    PortDirection mDirection;
};

class RealisedEventPort final : public RealisedPort {
  public:
    /// Adopts a declaration with one of the three reserved ids; any other belongs to the syntax tree.
    RealisedEventPort(unsigned int id, const VornComponentRealisation* component, const VornEventPort* port);

    /// Always bool: there is no value behind an event port, and the tag means nothing.
    VornDataTypeTag type() const override { return VornDataTypeTag::VornBool; }
    const VornEventPort* realises() const override { return mEventPort; }
    void print(std::ostream& stream) const override;

    /// Always true for an error port.
    bool nonblocking() const noexcept { return mNonblocking; }
    /// How the event occurs by itself; none for a port that is no error port.
    DistributionType occurrence() const noexcept { return mOccurrence; }
    /// True when the event occurs by itself.
    bool stochastic() const noexcept { return mOccurrence != DistributionType::none; }
    /// Occurrences per unit of model time; 0.0 for a port that is no error port.
    double rate() const noexcept { return mRate; }

  private:
    bool mNonblocking;
    DistributionType mOccurrence;
    double mRate;
    const VornEventPort* mEventPort;
    std::unique_ptr<const VornEventPort> mOwnedDeclaration;
};

class RealisedDataPort final : public RealisedPort {
  public:
    RealisedDataPort(unsigned int id, const VornComponentRealisation* component, const VornDataPort* port);

    VornDataTypeTag type() const override { return mDataPort->type(); }
    const VornDataPort* realises() const override { return mDataPort; }
    void print(std::ostream& stream) const override;

  private:
    const VornDataPort* mDataPort;
};

}  // namespace vornrun
