#include "tests/vornrun/api/DoorModels.h"

#include <sstream>

namespace vornrun::test {

void Transcript::start(std::span<const Value> values) {
    std::ostringstream line;
    line << std::hexfloat << "start";
    for (const Value& value : values) print(line << " ", value);
    lines.push_back(line.str());
}

void Transcript::step(const Step& step) {
    std::ostringstream line;
    line << std::hexfloat << step.number << " " << step.delay << " " << step.time << " " << step.event;
    for (const FiredTransition& fired : step.transitions)
        line << " " << fired.component << ":" << fired.source << "->" << fired.target;
    for (const Change& change : step.changes) {
        print(line << " " << change.value << ":", change.before);
        print(line << "=>", change.after);
    }
    lines.push_back(line.str());
}

void Transcript::end(const Record& record) {
    std::ostringstream line;
    line << std::hexfloat << word(record.verdict) << " " << word(record.ending) << " " << record.steps << " "
         << record.time << " " << record.text;
    lines.push_back(line.str());
}

std::vector<std::string> transcriptOf(Runner& runner, RandomGenerator& stream) {
    Transcript transcript;
    runner.setObserver(&transcript);
    runner.run(stream);
    runner.setObserver(nullptr);
    return transcript.lines;
}

}  // namespace vornrun::test
