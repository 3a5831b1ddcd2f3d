#pragma once
/// \file
/// The action of a strategy in one step: it takes transitions, lets time pass, or both.

#include <cstddef>
#include <iosfwd>
#include <string>

#include "vornrun/datastructures/eda/QualifiedTransition.h"
#include "vornrun/datastructures/vorn/syntax/expressions/TimeInterval.h"

namespace vornrun {

class EDANetwork;

class SimulationStep {
  public:
    SimulationStep() = default;
    SimulationStep(const SimulationStep&) = delete;
    SimulationStep& operator=(const SimulationStep&) = delete;
    virtual ~SimulationStep() = default;
    // Steps use memory from the free list of the thread.
    static void* operator new(std::size_t size);
    static void operator delete(void* step, std::size_t size) noexcept;
    /// Takes the step on a network.
    virtual void apply(EDANetwork* network) const = 0;
    /// The delay of the step in model time.
    virtual Time time() const = 0;
    /// Whether the step is one that counts in the time of a trace.
    virtual bool letsTimePass() const { return false; }
    virtual std::ostream& print(std::ostream& stream) const = 0;
};

std::ostream& operator<<(std::ostream& stream, const SimulationStep& step);

class DiscreteSimulationStep : public virtual SimulationStep {
  public:
    /// \param transitions those fired together; not empty
    /// \throws std::invalid_argument for an empty list
    explicit DiscreteSimulationStep(QualifiedTransitions transitions);
    ~DiscreteSimulationStep() override;  // puts the storage of the list on the free list
    const QualifiedTransitions& transitions() const noexcept { return mTransitions; }
    /// The local name of the first transition's trigger; valid as long as the model.
    const std::string& event() const { return mTransitions.front().second->trigger()->identifier(); }
    void apply(EDANetwork* network) const override;
    Time time() const override { return 0.0; }
    /// Shows only the first of the transitions fired together.
    std::ostream& print(std::ostream& stream) const override;

  private:
    QualifiedTransitions mTransitions;
};

class TimeSimulationStep : public virtual SimulationStep {
  public:
    explicit TimeSimulationStep(Time delay) : mDelay(delay) {}
    /// A delay that is not above 0 does nothing.
    void apply(EDANetwork* network) const override;
    Time time() const override { return mDelay; }
    bool letsTimePass() const override { return true; }
    std::ostream& print(std::ostream& stream) const override;

  private:
    Time mDelay;
};

/// First time, then the transitions.
class CombinedSimulationStep final : public DiscreteSimulationStep, public TimeSimulationStep {
  public:
    CombinedSimulationStep(QualifiedTransitions transitions, Time delay);
    void apply(EDANetwork* network) const override;
    Time time() const override { return TimeSimulationStep::time(); }
    std::ostream& print(std::ostream& stream) const override;
};

}  // namespace vornrun
