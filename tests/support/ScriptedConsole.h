#pragma once
/// \file
/// A console whose input the test writes and whose output the test reads.

#include <istream>
#include <ostream>
#include <sstream>
#include <string>

#include "vornrun/algorithms/simulators/strategies/Console.h"
#include "vornrun/datastructures/eda/EDANetwork.h"

namespace vornrun::test {

/// The input is tied to the output, as on a terminal: reading flushes. Topologies go into the working directory.
class ScriptedConsole final : public Console {
  public:
    explicit ScriptedConsole(const std::string& input = "") : mOutputStream(&mBuffer), mInputStream(input) {
        mInputStream.tie(&mOutputStream);
    }

    std::ostream& output() override { return mOutputStream; }
    std::istream& input() override { return mInputStream; }
    void dumpTopologies(const EDANetwork& network) override { network.dumpTopologies(); }

    /// All output so far.
    std::string text() const { return mBuffer.str(); }
    /// How often the output was flushed.
    int flushes() const noexcept { return mBuffer.flushes; }

  private:
    class CountingBuffer final : public std::stringbuf {
      public:
        int flushes = 0;

      protected:
        int sync() override {
            ++flushes;
            return 0;
        }
    };

    CountingBuffer mBuffer;
    std::ostream mOutputStream;
    std::istringstream mInputStream;
};

}  // namespace vornrun::test
