#include "tests/support/ParseModel.h"

#include "tests/support/TempDir.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"

namespace vornrun::test {

std::unique_ptr<VornSpecification> parseModelText(const std::string& text) {
    const TempDir folder;
    parser::XmlContext context;
    VornXmlParser parser(context);
    return std::unique_ptr<VornSpecification>(parser.parseVorn(folder.write("model.xml", text)));
}

std::unique_ptr<VornSpecification> parseModel(const Xml& document) { return parseModelText(toDocument(document)); }

std::unique_ptr<VornSpecification> parseModel(const ModelWriter& model) { return parseModel(model.document()); }

}  // namespace vornrun::test
