#pragma once
/// \file
/// Small pieces of syntax trees, for tests. What make...() gives is owned by whoever takes it.

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/Printed.h"
#include "vornrun/datastructures/vorn/syntax/VornComponentImplementation.h"

namespace vornrun::test {

inline VornEventPort* makeEventPort(const std::string& name, unsigned int id = 10) {
    return new VornEventPort(id, name, PortDirection::in, false);
}

inline VornComponentDeclaration* makeDeclaration(const std::string& name, const std::vector<VornPort*>& ports = {}) {
    return new VornComponentDeclaration(name, VornComponentCategory::system, ports);
}

inline VornSubComponent* makeSubcomponent(const std::string& name, const std::string& reference,
                                          std::vector<std::string> inModes = {}) {
    return new VornSubComponent(0, name, reference, {}, std::move(inModes));
}

inline VornMode* makeMode(const std::string& name, VornModeType type = VornModeType::plain) {
    return new VornMode(0, name, nullptr, {}, type);
}

/// What an implementation is made of; all parts may be left out.
struct Parts {
    std::vector<VornSubComponent*> subcomponents{};
    std::vector<VornDataSubcomponent*> data{};
    std::vector<VornFlow*> flows{};
    std::vector<VornConnection*> connections{};
    std::vector<VornMode*> modes{};
    std::vector<VornTransition*> transitions{};
    std::vector<VornTransition*> reactivations{};
};

inline VornComponentImplementation* makeImplementation(const VornComponentDeclaration* declaration,
                                                       const std::string& name, const Parts& parts = {}) {
    return new VornComponentImplementation(name, declaration, parts.subcomponents, parts.data, parts.flows,
                                           parts.connections, parts.modes, parts.transitions, parts.reactivations);
}

}  // namespace vornrun::test
