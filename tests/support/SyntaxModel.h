#pragma once
/// \file
/// Component implementations made straight from the syntax classes, without a file and a parser in between: for tests
/// of what no sound file says, such as a variable under a wrong type, and where ids must be known.
///
///     using namespace direct;
///     SyntaxModel model;
///     const VornComponentImplementation& pump = model.component("Pump", ComponentDraft()
///         .eventPort("start", PortDirection::in)
///         .data<VornClock>("x", 0.0)
///         .mode("idle", VornModeType::initial).mode("on")
///         .transition("idle", "on", "start", nullptr, {assign(var<VornClock>("x"), constant<VornClock>(0.0))}));

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "vornrun/datastructures/vorn/realisation/RealisedMode.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test::direct {

using ModeNames = std::vector<std::string>;
using AssignmentList = std::vector<VornAssignment*>;

template <class T>
VornVariable* var(const std::string& name) {
    return new TypedVornVariable<T>(name);
}
template <class T>
TypedVornValue<T>* constant(const typename T::AssociatedDataType& value) {
    return new TypedVornValue<T>(value);
}
/// A mode literal: path, ":", mode.
inline TypedVornValue<VornModeVal>* modeLiteral(const std::string& text) {
    return new TypedVornValue<VornModeVal>(new RealisedMode(RealisedMode::DUMMY_ID, text));
}
inline VornAssignment* assign(VornVariable* target, VornExpressionTree* expression) {
    return new VornAssignment(target, expression);
}
/// A guard or invariant without comparisons.
inline VornLinearExpression* plainly(VornExpressionTree* condition) {
    return new VornLinearExpression(dynamic_cast<TypedVornExpressionTree<VornBool>*>(condition), {});
}
template <class T>
VornTrajectoryEquation* rate(const std::string& variable, const typename T::AssociatedDataType& value) {
    return new TypedVornTrajectoryEquation<T>(new TypedVornVariable<VornContinuous>(variable), constant<T>(value));
}

/// Numbers as the parser would give them out: ports from 10, the others from 0.
struct SyntaxIds {
    unsigned int port = 10;
    unsigned int mode = 0;
    unsigned int transition = 0;
    unsigned int subcomponent = 0;
};

/// The parts of one implementation, named "i" of its type. Every pointer is adopted once the draft is made a component.
class ComponentDraft {
  public:
    ComponentDraft& eventPort(const std::string& name, PortDirection direction, bool nonblocking = false) {
        return port([=](unsigned int id) { return new VornEventPort(id, name, direction, nonblocking); });
    }
    ComponentDraft& errorPort(const std::string& name, double poissonRate) {
        return port([=](unsigned int id) {
            return new VornErrorPort(id, name, PortDirection::out, false, DistributionType::poisson, poissonRate);
        });
    }
    template <class T>
    ComponentDraft& dataPort(const std::string& name, PortDirection direction, TypedVornValue<T>* value = nullptr) {
        return port(
            [=](unsigned int id) { return new TypedVornDataPort<T>(id, name, direction, value, PortTag::none); });
    }
    template <class T>
    ComponentDraft& data(const std::string& name, TypedVornValue<T>* value = nullptr, const ModeNames& modes = {}) {
        mData.push_back(new TypedVornDataSubcomponent<T>(name, value, modes, false));
        return *this;
    }
    ComponentDraft& mode(const std::string& name, VornModeType type = VornModeType::plain,
                         VornLinearExpression* invariant = nullptr,
                         const std::vector<VornTrajectoryEquation*>& trajectories = {}) {
        mModes.push_back([=](unsigned int id) { return new VornMode(id, name, invariant, trajectories, type); });
        return *this;
    }
    /// \param trigger none when it is empty
    ComponentDraft& transition(const std::string& source, const std::string& target, const std::string& trigger = "",
                               VornLinearExpression* guard = nullptr, const AssignmentList& effects = {}) {
        mTransitions.push_back(transitionOf(source, target, trigger, guard, effects));
        return *this;
    }
    ComponentDraft& reactivation(const std::string& source, const std::string& target,
                                 const AssignmentList& effects = {}) {
        mReactivations.push_back(transitionOf(source, target, "", nullptr, effects));
        return *this;
    }
    ComponentDraft& flow(VornVariable* target, VornExpressionTree* expression, const ModeNames& modes = {}) {
        mFlows.push_back(new VornFlow(target, expression, modes));
        return *this;
    }
    ComponentDraft& connectEvent(const std::string& source, const std::string& target, const ModeNames& modes = {},
                                 bool passive = false) {
        return connect(source, target, true, modes, passive);
    }
    ComponentDraft& connectData(const std::string& source, const std::string& target, const ModeNames& modes = {}) {
        return connect(source, target, false, modes, false);
    }
    ComponentDraft& subcomponent(const std::string& name, const VornComponentImplementation& implementation,
                                 const ModeNames& modes = {}) {
        mSubcomponents.push_back([=, &implementation](unsigned int id) {
            auto* result = new VornSubComponent(id, name, implementation.qualifiedName(), {}, modes);
            result->setImplementation(const_cast<VornComponentImplementation*>(&implementation));
            return result;
        });
        return *this;
    }

  private:
    friend class SyntaxModel;
    template <class Part>
    using Makers = std::vector<std::function<Part*(unsigned int id)>>;

    ComponentDraft& port(std::function<VornPort*(unsigned int id)> maker) {
        mPorts.push_back(std::move(maker));
        return *this;
    }
    ComponentDraft& connect(const std::string& source, const std::string& target, bool isEvent, const ModeNames& modes,
                            bool passive) {
        mConnections.push_back(
            new VornConnection(new VornReference(source), new VornReference(target), isEvent, modes, passive));
        return *this;
    }
    static std::function<VornTransition*(unsigned int)> transitionOf(const std::string& source,
                                                                     const std::string& target,
                                                                     const std::string& trigger,
                                                                     VornLinearExpression* guard,
                                                                     const AssignmentList& effects) {
        return [=](unsigned int id) {
            return new VornTransition(id, source, target,
                                      trigger.empty() ? nullptr : new VornTransitionTrigger(trigger), guard, effects);
        };
    }

    Makers<VornPort> mPorts;
    Makers<VornMode> mModes;
    Makers<VornTransition> mTransitions;
    Makers<VornTransition> mReactivations;
    Makers<VornSubComponent> mSubcomponents;
    std::vector<VornDataSubcomponent*> mData;
    std::vector<VornFlow*> mFlows;
    std::vector<VornConnection*> mConnections;
};

/// Owns component types with one implementation each, which stay in place.
class SyntaxModel {
  public:
    const VornComponentImplementation& component(const std::string& type, const ComponentDraft& draft) {
        mTypes.push_back(std::make_unique<VornComponentDeclaration>(type, VornComponentCategory::system,
                                                                    made(draft.mPorts, mIds.port)));
        // One after the other: the order of arguments would leave the numbers to the compiler.
        const auto subcomponents = made(draft.mSubcomponents, mIds.subcomponent);
        const auto modes = made(draft.mModes, mIds.mode);
        const auto transitions = made(draft.mTransitions, mIds.transition);
        const auto reactivations = made(draft.mReactivations, mIds.transition);
        mImplementations.push_back(std::make_unique<VornComponentImplementation>(
            "i", mTypes.back().get(), subcomponents, draft.mData, draft.mFlows, draft.mConnections, modes, transitions,
            reactivations));
        return *mImplementations.back();
    }

  private:
    template <class Part>
    static std::vector<Part*> made(const ComponentDraft::Makers<Part>& makers, unsigned int& nextId) {
        std::vector<Part*> parts;
        for (const auto& maker : makers) parts.push_back(maker(nextId++));
        return parts;
    }

    SyntaxIds mIds;
    std::deque<std::unique_ptr<VornComponentDeclaration>> mTypes;
    std::deque<std::unique_ptr<VornComponentImplementation>> mImplementations;
};

}  // namespace vornrun::test::direct
