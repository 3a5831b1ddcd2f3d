#pragma once
/// \file
/// A model, read once and never changed: what runners run and what questions are about.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "vornrun/api/Fault.h"
#include "vornrun/api/Value.h"

namespace vornrun {

class VornComponentImplementation;

/// A component instance.
struct ComponentInfo {
    std::string name;                   ///< as messages write it: "main" is the root, "main.pump1" a part of it
    std::string implementation;         ///< qualified name of its implementation: "Pump.Impl"
    std::optional<std::size_t> parent;  ///< index into Model::components(); none for the root
    std::vector<std::string> modes;     ///< in the order of their names
};

/// Something of the model that has a value at each moment of a trace.
struct ValueInfo {
    /// Where a value comes from.
    enum class Kind {
        data,    ///< a data subcomponent
        mode,    ///< the current mode of a component
        inPort,  ///< a data port that the component reads
        outPort  ///< a data port that the component writes
    };

    std::string name;  ///< as a property writes it: "mode", "pump1.mode", "pump1.delivers"
    ValueType type = ValueType::boolean;
    Kind kind = Kind::data;
    std::size_t component = 0;  ///< index of its component into Model::components()
};

/// A model of a file. Immutable: threads may share one, and a copy is cheap and refers to the same model.
class Model {
  public:
    /// Reads the file, checks that it has one root, and builds the model once.
    /// \throws FaultException with all that was found, when no trace of this model can be run
    static Model fromFile(const std::string& path);

    /// The path that the model was read from.
    const std::string& file() const noexcept;
    /// All component instances, each before its parts; the first one is the root.
    const std::vector<ComponentInfo>& components() const noexcept;
    /// All values, by component in the order of components(). Observers name a value by its index here.
    const std::vector<ValueInfo>& values() const noexcept;
    /// The index into values() of a value by its name; none when there is no such value.
    std::optional<std::size_t> findValue(const std::string& name) const;
    /// What the reader and the builder noticed in a model that can be run all the same. A name that does not resolve is
    /// among them: it becomes a fault of a trace that evaluates it.
    const std::vector<Fault>& warnings() const noexcept;

    /// The implementation of the root component, for the layers below the door; owned by the model.
    const VornComponentImplementation* root() const noexcept;

  private:
    struct Data;
    explicit Model(std::shared_ptr<const Data> data);

    std::shared_ptr<const Data> mData;
};

}  // namespace vornrun
