#pragma once
/// \file
/// The library's one door: this header has all that a client needs. A complete program:
///
///     #include <iostream>
///     #include <vornrun/api/vornrun.h>
///
///     int main() try {
///         const auto model = vornrun::Model::fromFile("model.xml");
///         const auto questions = vornrun::Question::fromFile("properties.xml");
///         vornrun::Runner runner(model, questions.front(), "asap");
///         int yes = 0;
///         for (unsigned k = 0; k < 1000; ++k) {
///             vornrun::TraceStream stream(/* seed */ 1, k);
///             if (runner.run(stream).verdict == vornrun::Verdict::yes) ++yes;
///         }
///         std::cout << yes / 1000.0 << "\n";
///     } catch (const vornrun::FaultException& exception) {
///         for (const vornrun::Fault& fault : exception.faults()) std::cerr << fault << "\n";
///         return 1;
///     }
///
/// Model and Question are immutable and shared by threads; each thread has a Runner of its own. Nothing here writes to
/// a standard stream, ends the process or keeps state between models.

#include "vornrun/api/Fault.h"        // IWYU pragma: export
#include "vornrun/api/Model.h"        // IWYU pragma: export
#include "vornrun/api/Observer.h"     // IWYU pragma: export
#include "vornrun/api/Question.h"     // IWYU pragma: export
#include "vornrun/api/Runner.h"       // IWYU pragma: export
#include "vornrun/api/TraceStream.h"  // IWYU pragma: export
#include "vornrun/api/Value.h"        // IWYU pragma: export
