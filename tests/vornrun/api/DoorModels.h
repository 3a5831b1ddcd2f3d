#pragma once
/// \file
/// Models and questions as files, for tests of the library's door.

#include <string>
#include <vector>

#include "tests/support/ModelWriter.h"
#include "tests/support/PropertyWriter.h"
#include "tests/support/TempDir.h"
#include "vornrun/api/vornrun.h"

namespace vornrun::test {

inline Model modelOf(const ModelWriter& writer) {
    const TempDir folder;
    return Model::fromFile(folder.write("model.xml", writer.text()));
}

inline Question questionOf(const PathFormula& path) {
    const TempDir folder;
    PropertyWriter writer;
    writer.p(path);
    return Question::fromFile(folder.write("properties.xml", writer.text())).front();
}

/// A mode that is left by the event "ends" at the given rate.
inline ModelWriter decay(double rate) {
    ModelWriter model;
    model.type("Root").errorPort("ends", rate);
    model.implementation("Root.i").mode("alive").mode("over").transition("alive", "over", on("ends"));
    return model;
}

inline PathFormula reaches(const std::string& mode, double time) {
    return eventually(modeOf() == modeLiteral("mode:" + mode), 0, time);
}

/// What an observer has seen, as lines of text with all digits.
class Transcript final : public Observer {
  public:
    void start(std::span<const Value> values) override;
    void step(const Step& step) override;
    void end(const Record& record) override;

    std::vector<std::string> lines;
};

/// The steps of a trace.
std::vector<std::string> transcriptOf(Runner& runner, RandomGenerator& stream);

}  // namespace vornrun::test
