#pragma once
/// \file
/// A generator that gives the draws that the test has written.

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "vornrun/algorithms/simulators/random/RandomGenerator.h"

namespace vornrun::test {

/// One expected draw: its kind, its result, and its arguments, if the test cares for them.
struct ScriptedDraw {
    enum class Kind { Real, Exponential, Integer };
    Kind kind;
    double number = 0.0;
    unsigned long integer = 0;
    std::optional<std::pair<double, double>> bounds = std::nullopt;  // of an exponential: the rate, twice
    std::optional<std::pair<unsigned long, unsigned long>> integerBounds = std::nullopt;
};

/// A draw of uniform(double, double) that gives `result`.
inline ScriptedDraw realDraw(double result) { return {ScriptedDraw::Kind::Real, result}; }
inline ScriptedDraw realDraw(double result, double low, double high) {
    return {ScriptedDraw::Kind::Real, result, 0, std::pair(low, high)};
}
/// A draw of exponential() that gives `result`.
inline ScriptedDraw exponentialDraw(double result) { return {ScriptedDraw::Kind::Exponential, result}; }
inline ScriptedDraw exponentialDraw(double result, double rate) {
    return {ScriptedDraw::Kind::Exponential, result, 0, std::pair(rate, rate)};
}
/// A draw of uniform(unsigned long, unsigned long) that gives `result`.
inline ScriptedDraw integerDraw(unsigned long result) { return {ScriptedDraw::Kind::Integer, 0.0, result}; }
inline ScriptedDraw integerDraw(unsigned long result, unsigned long low, unsigned long high) {
    return {ScriptedDraw::Kind::Integer, 0.0, result, std::nullopt, std::pair(low, high)};
}

/// Hands out the given draws in order. A draw that is missing or of another kind fails the test and throws
/// std::logic_error; other arguments than expected fail it; so do draws left over when the generator and all its clones
/// are gone. Clones go on with the same script. Reseeding is recorded and changes nothing.
class ScriptedRandomGenerator final : public RandomGenerator {
  public:
    explicit ScriptedRandomGenerator(std::vector<ScriptedDraw> draws)
        : RandomGenerator(1), mScript(std::make_shared<Script>(std::move(draws))) {}

    double uniform(double low, double high) override {
        const ScriptedDraw draw = mScript->next(ScriptedDraw::Kind::Real, "real number");
        if (draw.bounds) {
            EXPECT_EQ(std::pair(low, high), *draw.bounds) << "bounds of a real draw";
        }
        return draw.number;
    }
    double exponential(double rate) override {
        const ScriptedDraw draw = mScript->next(ScriptedDraw::Kind::Exponential, "exponential sample");
        if (draw.bounds) {
            EXPECT_EQ(rate, draw.bounds->first) << "rate of an exponential draw";
        }
        return draw.number;
    }
    unsigned long uniform(unsigned long low, unsigned long high) override {
        const ScriptedDraw draw = mScript->next(ScriptedDraw::Kind::Integer, "integer");
        if (draw.integerBounds) {
            EXPECT_EQ(std::pair(low, high), *draw.integerBounds) << "bounds of an integer draw";
        }
        return draw.integer;
    }
    ScriptedRandomGenerator* clone() const override { return new ScriptedRandomGenerator(*this); }
    void reseed(unsigned long seed) override { mScript->reseeds.push_back(seed); }

    /// How many draws are still to come.
    std::size_t remaining() const { return mScript->draws.size() - mScript->used; }
    /// The seeds given to reseed(), to clones too, in order.
    const std::vector<unsigned long>& reseeds() const { return mScript->reseeds; }

  private:
    struct Script {
        explicit Script(std::vector<ScriptedDraw> theDraws) : draws(std::move(theDraws)) {}
        Script(const Script&) = delete;
        Script& operator=(const Script&) = delete;
        // Reports what the code under test left undone.
        ~Script() { EXPECT_EQ(used, draws.size()) << "scripted draws were left over"; }

        ScriptedDraw next(ScriptedDraw::Kind kind, const std::string& wanted) {
            if (used == draws.size()) refuse("no draw is left for the " + wanted + " that is asked for");
            if (draws[used].kind != kind)
                refuse("draw " + std::to_string(used + 1) + " is not the " + wanted + " that is asked for");
            return draws[used++];
        }
        [[noreturn]] static void refuse(const std::string& reason) {
            ADD_FAILURE() << reason;
            throw std::logic_error(reason);
        }

        std::vector<ScriptedDraw> draws;
        std::size_t used = 0;
        std::vector<unsigned long> reseeds;
    };
    ScriptedRandomGenerator(const ScriptedRandomGenerator& other) = default;

    std::shared_ptr<Script> mScript;
};

}  // namespace vornrun::test
