#pragma once
/// \file
/// Shared by the sources of the syntax classes: maps of named parts, and joined printing.

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "vornrun/Log.h"
#include "vornrun/Ownership.h"
#include "vornrun/datastructures/vorn/syntax/Vorn.h"

namespace vornrun::syntax {

/// Maps of named things in which the first of a name stays.
class FirstOfName {
  public:
    /// Adds the object under its name. If the name is taken the object is deleted and a WARN names it.
    /// \param kind  what the object is, for the warning: "port"
    /// \param place where it is, for the warning: "component type 'Pump'"
    /// \return the object, or null when it was refused
    template <class T>
    static T* add(std::map<std::string, std::unique_ptr<T>>& things, const std::string& name, std::unique_ptr<T> object,
                  const char* kind, const std::string& place) {
        const auto [position, isFirst] = things.try_emplace(name, std::move(object));
        if (!isFirst) {
            warnOfSecond(kind, name, place);
            return nullptr;
        }
        return position->second.get();
    }

    /// Adds all objects by their own names, as above.
    template <class T>
    static std::map<std::string, std::unique_ptr<T>> mapOf(std::vector<std::unique_ptr<T>> objects, const char* kind,
                                                           const std::string& place) {
        std::map<std::string, std::unique_ptr<T>> things;
        for (auto& object : objects) {
            const std::string name = object->name();
            add(things, name, std::move(object), kind, place);
        }
        return things;
    }

  private:
    static void warnOfSecond(const char* kind, const std::string& name, const std::string& place);
    static const Log sLogger;
};

/// Writes the object, or "(null)" for one whose parsing failed.
template <class T>
void printOrNull(std::ostream& stream, const T* object) {
    if (object == nullptr) {
        stream << "(null)";
    } else {
        object->printVorn(stream);
    }
}

/// Writes " in modes (" + the names joined by ", " + ")"; nothing for an empty list, which means all modes.
void printInModes(std::ostream& stream, const std::vector<std::string>& inModes);

}  // namespace vornrun::syntax
