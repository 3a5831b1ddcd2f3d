#pragma once
/// \file
/// The ports of a component type: events, error events with an occurrence distribution, and data.

#include <iosfwd>
#include <memory>
#include <string>

#include "vornrun/datastructures/vorn/syntax/Vorn.h"
#include "vornrun/datastructures/vorn/syntax/VornDataTypes.h"
#include "vornrun/datastructures/vorn/syntax/VornIdentifier.h"
#include "vornrun/datastructures/vorn/syntax/expressions/VornValue.h"

namespace vornrun {

enum class PortDirection : unsigned int { in = 0, out = 1 };
std::ostream& operator<<(std::ostream& stream, PortDirection direction);
/// \throws std::invalid_argument "Cannot convert " + text + " to a port direction"
PortDirection portDirection(const std::string& text);

enum class PortType : unsigned int { event = 0, data = 1 };

enum class PortTag : unsigned int { none = 0, alarm = 1, observable = 2 };
/// Writes nothing, " alarm" or " observable".
std::ostream& operator<<(std::ostream& stream, PortTag tag);

/// How an error event occurs by itself.
enum class DistributionType : unsigned int { none = 0, poisson = 1 };
/// Maps the number of the model file: 0 to none, 1 to Poisson.
DistributionType distrTypeToVornDistributionType(unsigned int number);

/// A port. VornPartsConstructor makes ports and gives them their ids; the model constructor makes the synthetic ports.
class VornPort : public VornIdentifier, public Vorn {
  public:
    VornPort(unsigned int id, const std::string& name, PortDirection direction);

    unsigned int id() const noexcept { return mId; }
    PortDirection direction() const noexcept { return mDirection; }
    /// True for event ports, error ports included.
    virtual bool event() const = 0;

  protected:
    /// Name, " : ", direction, one blank.
    void printHead(std::ostream& stream) const;
    /// "; --" and the id.
    void printTail(std::ostream& stream) const;

  private:
    unsigned int mId;
    PortDirection mDirection;
};

class VornEventPort : public VornPort {
  public:
    VornEventPort(unsigned int id, const std::string& name, PortDirection direction, bool nonblocking);
    bool nonblocking() const noexcept { return mNonblocking; }
    bool event() const final { return true; }
    void printVorn(std::ostream& stream) const override;

  private:
    bool mNonblocking;
};

/// An event that can occur by itself, after an exponential delay.
class VornErrorPort final : public VornEventPort {
  public:
    /// \param parameter the Poisson rate, in occurrences per unit of model time; 0 without a distribution
    VornErrorPort(unsigned int id, const std::string& name, PortDirection direction, bool nonblocking,
                  DistributionType distribution, double parameter);
    DistributionType distribution() const noexcept { return mDistribution; }
    double parameter() const noexcept { return mParameter; }
    void printVorn(std::ostream& stream) const override;

  private:
    DistributionType mDistribution;
    double mParameter;
};

class VornDataPort : public VornPort {
  public:
    VornDataPort(unsigned int id, const std::string& name, PortDirection direction, PortTag tag);
    PortTag tag() const noexcept { return mTag; }
    bool event() const final { return false; }
    virtual VornDataTypeTag type() const = 0;
    /// Borrowed; null when the declaration has no default.
    virtual const VornValue* defaultValue() const = 0;

  private:
    PortTag mTag;
};

template <class T>
class TypedVornDataPort final : public VornDataPort {
  public:
    /// Adopts the default, which may be null.
    TypedVornDataPort(unsigned int id, const std::string& name, PortDirection direction,
                      TypedVornValue<T>* defaultValue, PortTag tag);
    VornDataTypeTag type() const override { return T::tag; }
    const TypedVornValue<T>* defaultValue() const override { return mDefault.get(); }
    void printVorn(std::ostream& stream) const override;

  private:
    std::unique_ptr<TypedVornValue<T>> mDefault;
};

#define VORN_DECLARE(T) extern template class TypedVornDataPort<T>;
VORN_FOR_EACH_TYPE(VORN_DECLARE)
#undef VORN_DECLARE

}  // namespace vornrun
