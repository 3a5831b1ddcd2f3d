#pragma once
/// \file
/// Runs traces of a model, one at a time.

#include <memory>
#include <string>
#include <vector>

#include "vornrun/api/Model.h"
#include "vornrun/api/Observer.h"
#include "vornrun/api/Question.h"

namespace vornrun {

class RandomGenerator;

/// Whether a trace satisfies its question.
enum class Verdict { yes, no, undecided };

/// How a trace ended.
enum class Ending {
    decided,    ///< the question was decided
    deadlock,   ///< no step was possible
    stepBound,  ///< the trace had as many steps as the limits allow
    fault       ///< the model asked for something that has no value, such as a division by zero
};

/// The word for it: "true", "false" or "undecided".
const char* word(Verdict verdict) noexcept;
/// The word for it: "decided", "deadlock", "step bound" or "fault".
const char* word(Ending ending) noexcept;

/// What a trace came out as.
struct Record {
    Verdict verdict = Verdict::undecided;  ///< undecided for every other ending than `decided`
    Ending ending = Ending::decided;
    unsigned long steps = 0;  ///< taken before the end
    double time = 0.0;        ///< model time at the end
    std::string text;         ///< why, for a deadlock or a fault; empty otherwise
};

/// What a trace may cost.
struct Limits {
    unsigned long steps = 10000;  ///< a trace that is undecided after so many steps ends
};

/// Runs the traces of one question about one model under one strategy. One thread uses a runner; a program has one for
/// each thread. It costs about as much to make as a model of that size to read.
///
/// Runs are pristine: a trace depends on model, question, strategy, limits and the numbers of the stream alone, and not
/// on what ran before, on which runner or on which thread. The same stream gives the same trace, bit for bit.
///
/// A nested probability in a question is estimated by 10,000 traces from the initial state at each look; steps and time
/// of the record then tell about the last of these.
class Runner {
  public:
    /// \param strategy "asap", "event", "local", "maxtime" or "progressive"
    /// \throws FaultException for a strategy that does not exist or cannot run here, and for a question that does not
    ///         fit the model
    Runner(const Model& model, const Question& question, const std::string& strategy = "asap", Limits limits = {});
    Runner(Runner&&) noexcept;
    Runner& operator=(Runner&&) noexcept;
    ~Runner();

    /// Runs one trace with the random numbers of the stream, of which it uses as many as the trace needs.
    Record run(RandomGenerator& stream);

    /// Shows every trace from now on to the observer; none for null. Not owned. Without one, steps are not described.
    void setObserver(Observer* observer) noexcept;

    /// What was noticed while the question was bound to the model: names that do not resolve, above all.
    const std::vector<Fault>& warnings() const noexcept;

    /// The strategies that a runner takes, by their words.
    static std::vector<std::string> strategies();

  private:
    class State;
    std::unique_ptr<State> mState;
};

}  // namespace vornrun
