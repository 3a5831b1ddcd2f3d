#pragma once
/// \file
/// Makes the ports of component types and gives them their ids.

#include <cstdint>
#include <string>

#include "vornrun/datastructures/vorn/syntax/VornPort.h"

namespace vornrun {

/// Each operation returns a new port, owned by the caller, with the next id.
class VornPartsConstructor {
  public:
    static constexpr std::uint32_t FIRST_PORT_ID = 10;
    /// The id of the next port that this thread makes. It starts at FIRST_PORT_ID and counts over all files, so that
    /// ids follow the order of parsing; FreshIds starts it anew. The largest unsigned numbers are for the
    /// synthetic ports of realised components.
    static thread_local std::uint32_t portIdCounter;

    static VornEventPort* createEventPort(const std::string& name, PortDirection direction, bool nonblocking);
    /// An error port that does not occur by itself.
    static VornErrorPort* createErrorPort(const std::string& name, PortDirection direction, bool nonblocking);
    /// \param rate in occurrences per unit of model time
    /// \throws std::invalid_argument "Poisson numbers have to be positive" when the rate is not greater than 0, not a
    ///         number included; no id is used then
    static VornErrorPort* createErrorPort(const std::string& name, PortDirection direction, bool nonblocking,
                                          DistributionType distribution, double rate);
    /// \param defaultValue adopted; may be null. A value of another type than `tag` is deleted, and the port then has
    ///                     no default.
    /// \return null for a tag beyond the eight, the default being deleted and no id used
    static VornDataPort* createDataPort(const std::string& name, PortDirection direction, VornDataTypeTag tag,
                                        VornValue* defaultValue, const PortTag& portTag);
    /// \param defaultValue adopted; may be null
    template <class T>
    static TypedVornDataPort<T>* createDataPort(const std::string& name, PortDirection direction,
                                                TypedVornValue<T>* defaultValue, const PortTag& portTag);
};

#define VORN_DECLARE(T)                                                                                              \
    extern template TypedVornDataPort<T>* VornPartsConstructor::createDataPort<T>(const std::string&, PortDirection, \
                                                                                  TypedVornValue<T>*, const PortTag&);
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
