#pragma once
/// \file
/// What the tests of the property parser share: property files, read by the real parser.

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/PropertyWriter.h"
#include "tests/support/TempDir.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/datastructures/property/CSLFormula.h"

namespace vornrun::test {

using Formulas = std::vector<std::unique_ptr<CSLFormula>>;

inline Formulas parsePropertyText(const std::string& text) {
    const TempDir folder;
    parser::XmlContext context;
    VornXmlParser parser(context);
    Formulas formulas;
    for (CSLFormula* formula : parser.parseProperties(folder.write("p.xml", text))) formulas.emplace_back(formula);
    return formulas;
}

inline std::vector<std::string> printed(const Formulas& formulas) {
    std::vector<std::string> texts;
    for (const auto& formula : formulas) {
        std::ostringstream stream;
        stream << *formula;
        texts.push_back(stream.str());
    }
    return texts;
}

inline std::vector<std::string> parsedAndPrinted(const PropertyWriter& properties) {
    return printed(parsePropertyText(properties.text()));
}

}  // namespace vornrun::test
