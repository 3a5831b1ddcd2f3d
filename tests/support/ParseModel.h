#pragma once
/// \file
/// Writes a model to a temporary file and reads it with the real parser.

#include <memory>
#include <string>

#include "tests/support/ModelWriter.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {

// Each throws what VornXmlParser::parseVorn() throws.
std::unique_ptr<VornSpecification> parseModel(const ModelWriter& model);
std::unique_ptr<VornSpecification> parseModel(const Xml& document);
/// \param text the whole file, well-formed or not
std::unique_ptr<VornSpecification> parseModelText(const std::string& text);

}  // namespace vornrun::test
