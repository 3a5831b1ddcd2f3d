#pragma once
/// \file
/// What is wrong with a model or a question, as values: a client prints, sorts or counts them as it likes.

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace vornrun {

enum class Severity { warning, error };

/// One thing that is wrong, or may be.
struct Fault {
    Severity severity = Severity::error;
    std::string text;     ///< a sentence that names the component and the thing at fault
    std::string file;     ///< path as it was given; empty where no file is concerned
    unsigned line = 0;    ///< from 1; 0 where the reader does not know it
    unsigned column = 0;  ///< from 1; 0 where the reader does not know it
};

/// Writes "file:line:column: error: text"; what is not known is left out.
std::ostream& operator<<(std::ostream& stream, const Fault& fault);

/// A model or question that cannot be used. The one exception that the library's door throws for bad input.
class FaultException : public std::runtime_error {
  public:
    /// \pre there is at least one fault
    explicit FaultException(std::vector<Fault> faults);

    /// All that was found, in the order in which it was found: warnings and errors on the way, and last what made the
    /// reader give up. what() is this last one, as it prints.
    const std::vector<Fault>& faults() const noexcept { return mFaults; }

  private:
    std::vector<Fault> mFaults;
};

}  // namespace vornrun
