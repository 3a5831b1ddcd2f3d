// The operations that clients of the parsers call, with their parameters and results. Most of it is checked by the
// compiler: a function whose type changes does not fit its pointer any more.

#include <gtest/gtest.h>

#include <concepts>
#include <memory>
#include <type_traits>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "vornrun/algorithms/parser/ExpressionParser.h"
#include "vornrun/algorithms/parser/PropertyParser.h"
#include "vornrun/algorithms/parser/TypeDeclParser.h"
#include "vornrun/algorithms/parser/TypeImplParser.h"
#include "vornrun/algorithms/parser/XmlUtil.h"
#include "vornrun/algorithms/vornconstructor/VornPackageConstructor.h"
#include "vornrun/algorithms/vornconstructor/VornPartsConstructor.h"
#include "vornrun/datastructures/property/CSLFormula.h"
#include "vornrun/datastructures/vorn/syntax/VornPackage.h"
#include "vornrun/datastructures/vorn/syntax/VornSpecification.h"

namespace vornrun::test {
namespace {

using parser::AbstractVornXmlParser;
using parser::XmlContext;
using xercesc::DOMElement;
using xercesc::DOMNodeList;
namespace util = parser::util;

using Element = const DOMElement*;
using Elements = std::vector<Element>;
using ExpressionParser = VornXmlParser::ExpressionParser;
using PropertyParser = VornXmlParser::PropertyParser;
using TypeDeclParser = VornXmlParser::TypeDeclParser;
using TypeImplParser = VornXmlParser::TypeImplParser;

/// True when the pointer to a function or member has exactly the type.
template <class Type>
constexpr bool hasType(std::same_as<Type> auto pointer) {
    return pointer != nullptr;
}

template <class Class, class Result, class... Parameters>
using Operation = Result (Class::*)(Parameters...);
template <class Class, class Result, class... Parameters>
using Query = Result (Class::*)(Parameters...) const;

template <class Result, class... Parameters>
using Helper = Query<AbstractVornXmlParser, Result, Parameters...>;
template <class Result, class... Parameters>
using OfTypes = Query<TypeDeclParser, Result, Parameters...>;
template <class Result, class... Parameters>
using OfImplementations = Query<TypeImplParser, Result, Parameters...>;
template <class Result, class... Parameters>
using OfExpressions = Query<ExpressionParser, Result, Parameters...>;
template <class Result, class... Parameters>
using OfProperties = Query<PropertyParser, Result, Parameters...>;

TEST(ParserOperations, AreThoseOfTheLibrary) {
    EXPECT_TRUE((std::is_same_v<decltype((util::initCount)), int&>));
    EXPECT_TRUE((std::is_same_v<decltype((util::xercesInitialized)), bool&>));
    EXPECT_TRUE((std::is_same_v<decltype((util::tagBoolTrue)), XMLCh*&>));
    EXPECT_TRUE((std::is_same_v<decltype((util::tagBoolFalse)), XMLCh*&>));
    EXPECT_NE(static_cast<bool (*)()>(util::initialize), nullptr);
    EXPECT_TRUE(hasType<void (*)()>(&util::clean));
    EXPECT_TRUE(hasType<std::string (*)(const XMLCh*)>(&util::transcode));
    EXPECT_TRUE((hasType<std::string (*)(Element, bool)>(&util::nodeName)));
    EXPECT_TRUE((std::is_invocable_r_v<bool, decltype(util::elemMatchesTag), Element, XMLCh* const&, bool>));
    EXPECT_TRUE(hasType<std::string (*)(Element)>(&util::getStringContent));
    EXPECT_TRUE((std::is_invocable_r_v<bool, decltype(util::getBooleanContent), Element, const std::string&>));
    EXPECT_TRUE(
        (std::is_invocable_r_v<unsigned int, decltype(util::getNaturalNumberContent), Element, const std::string&>));
    EXPECT_TRUE((std::is_invocable_r_v<int, decltype(util::getIntegerNumberContent), Element, const std::string&>));
    EXPECT_TRUE((std::is_invocable_r_v<double, decltype(util::getRealNumberContent), Element, const std::string&>));
    EXPECT_TRUE(hasType<parser::OperatorType (*)(int)>(&parser::parsedIntToOperatorType));
}

TEST(ParserOperations, AreThoseOfEveryParser) {
    EXPECT_TRUE((std::is_constructible_v<VornXmlParser, XmlContext&>));
    EXPECT_TRUE((hasType<Operation<AbstractVornXmlParser, void, const xercesc::DOMDocument*>>(
        &AbstractVornXmlParser::buildContext)));
    EXPECT_TRUE((hasType<Helper<Element, Element>>(&AbstractVornXmlParser::checkReference)));
    EXPECT_TRUE((hasType<Helper<Element, Element>>(&AbstractVornXmlParser::firstChild)));
    EXPECT_TRUE((hasType<Helper<Element, Element, unsigned int>>(&AbstractVornXmlParser::indexChild)));
    EXPECT_TRUE((hasType<Helper<Element, Element, const XMLCh*, bool>>(&AbstractVornXmlParser::findChildWithName)));
    EXPECT_TRUE((hasType<Helper<Element, Element, const XMLCh*, std::string_view, bool>>(
        &AbstractVornXmlParser::expectChildNode)));
    EXPECT_TRUE((hasType<Helper<Elements, Element>>(&AbstractVornXmlParser::listChildren)));
    EXPECT_TRUE((hasType<Helper<Elements, Element, const XMLCh*, bool>>(&AbstractVornXmlParser::listChildrenWithTag)));
    EXPECT_TRUE((hasType<Helper<std::string, Element>>(&AbstractVornXmlParser::getNameFromChildNodes)));
    EXPECT_TRUE((hasType<Helper<VornDataTypeTag, Element>>(&AbstractVornXmlParser::getDataTypeFromChildNodes)));
    EXPECT_TRUE((hasType<Helper<std::vector<std::string>, Element>>(&AbstractVornXmlParser::inModes)));
}

TEST(ParserOperations, AreThoseOfTheTwoFiles) {
    using Parser = VornXmlParser;
    EXPECT_TRUE((hasType<Operation<Parser, VornSpecification*, const std::string&>>(&Parser::parseVorn)));
    EXPECT_TRUE((hasType<Operation<Parser, std::vector<CSLFormula*>, const std::string&>>(&Parser::parseProperties)));
    EXPECT_TRUE((hasType<Operation<Parser, VornSpecification*, Element>>(&Parser::buildModel)));
    EXPECT_TRUE((hasType<Operation<Parser, std::vector<VornPackage*>, Element>>(&Parser::parsePackages)));
    EXPECT_TRUE((hasType<Operation<Parser, VornPackage*, Element>>(&Parser::parsePackage)));
    EXPECT_TRUE((hasType<Operation<Parser, void, VornPackageConstructor&, Element, bool>>(&Parser::parseSubpackage)));
}

TEST(ParserOperations, AreThoseOfTypes) {
    using Parser = TypeDeclParser;
    EXPECT_TRUE((std::is_invocable_v<decltype(&Parser::setMode), Parser&, TypeParserMode>));
    EXPECT_TRUE((hasType<OfTypes<void, VornPackageConstructor&, Element>>(&Parser::parseSubpackageTypes)));
    EXPECT_TRUE((hasType<OfTypes<VornComponentDeclaration*, Element>>(&Parser::parseTypeDeclaration)));
    EXPECT_TRUE(
        (hasType<OfTypes<std::vector<VornPort*>, const DOMNodeList*, PortType, PortDirection>>(&Parser::parsePorts)));
    EXPECT_TRUE((hasType<OfTypes<VornEventPort*, Element, PortDirection>>(&Parser::parseEventPort)));
    EXPECT_TRUE((hasType<OfTypes<VornDataPort*, Element, PortDirection>>(&Parser::parseDataPort)));
    EXPECT_TRUE((hasType<OfTypes<VornErrorPort*, Element, PortDirection>>(&Parser::parseErrorPort)));
    EXPECT_TRUE((hasType<OfTypes<const XMLCh*, PortDirection, PortType>>(&Parser::getPortTag)));
    EXPECT_TRUE((hasType<OfTypes<bool, Element, PortType, PortDirection>>(&Parser::featureTagMatches)));
}

TEST(ParserOperations, AreThoseOfImplementations) {
    using Parser = TypeImplParser;
    EXPECT_TRUE((hasType<OfImplementations<void, VornPackageConstructor&, Element>>(&Parser::parseSubpackageImpls)));
    EXPECT_TRUE((hasType<OfImplementations<VornComponentImplementation*, Element, const VornPackageConstructor&>>(
        &Parser::parseComponentImplementation)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornMode*>, Element>>(&Parser::parseModes)));
    EXPECT_TRUE((hasType<OfImplementations<VornMode*, Element>>(&Parser::parseMode)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<Clause*>, Element>>(&Parser::parseClauses)));
    EXPECT_TRUE(
        (hasType<OfImplementations<std::vector<VornTrajectoryEquation*>, Element>>(&Parser::parseTrajectories)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornTransition*>, Element>>(&Parser::parseTransitions)));
    EXPECT_TRUE((hasType<OfImplementations<VornTransition*, Element>>(&Parser::parseTransition)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornConnection*>, Element, bool>>(&Parser::parseConnections)));
    EXPECT_TRUE((hasType<OfImplementations<VornConnection*, Element, bool>>(&Parser::parseConnection)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornFlow*>, Element>>(&Parser::parseFlows)));
    EXPECT_TRUE((hasType<OfImplementations<VornFlow*, Element>>(&Parser::parseFlow)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornSubComponent*>, Element>>(&Parser::parseSubcomponents)));
    EXPECT_TRUE((hasType<OfImplementations<VornSubComponent*, Element>>(&Parser::parseSubcomponent)));
    EXPECT_TRUE((hasType<OfImplementations<std::vector<VornBinding>, Element>>(&Parser::parseSubcomponentBindings)));
    EXPECT_TRUE(
        (hasType<OfImplementations<std::vector<VornDataSubcomponent*>, Element>>(&Parser::parseDataSubcomponents)));
    EXPECT_TRUE((hasType<OfImplementations<VornDataSubcomponent*, Element>>(&Parser::parseDataSubcomponent)));
    EXPECT_TRUE((hasType<OfImplementations<VornAssignment*, Element>>(&Parser::parseAssignment)));
}

TEST(ParserOperations, AreThoseOfExpressions) {
    using Parser = ExpressionParser;
    EXPECT_TRUE((hasType<OfExpressions<VornExpressionTree*, Element>>(&Parser::parseSubexpression)));
    EXPECT_TRUE((hasType<OfExpressions<VornVariable*, Element>>(&Parser::parseIdentifierNode)));
    EXPECT_TRUE((hasType<OfExpressions<VornValue*, Element>>(&Parser::parseVornValue)));
    EXPECT_TRUE((hasType<OfExpressions<VornValue*, Element, VornDataTypeTag>>(&Parser::parseVornValueOfGivenType)));
    EXPECT_TRUE((hasType<OfExpressions<int, Element>>(&Parser::getNodeTypeForExpressionNode)));
    EXPECT_TRUE((hasType<OfExpressions<VornDataTypeTag, Element>>(&Parser::getDataTypeForExpressionLeaves)));
    EXPECT_TRUE((hasType<OfExpressions<VornExpressionTree*, Element>>(&Parser::parseBinaryExpression)));
    EXPECT_TRUE((hasType<OfExpressions<VornExpressionTree*, Element>>(&Parser::parseUnaryExpression)));
    EXPECT_TRUE((hasType<OfExpressions<VornExpressionTree*, Element>>(&Parser::parseCaseExpression)));
    EXPECT_TRUE((hasType<OfExpressions<VornExpressionTree*, Element>>(&Parser::parseTrajectoryNode)));
}

TEST(ParserOperations, AreThoseOfProperties) {
    using Parser = PropertyParser;
    EXPECT_TRUE((std::is_constructible_v<Parser, XmlContext&, const ExpressionParser*>));
    EXPECT_TRUE((hasType<Operation<Parser, std::vector<CSLFormula*>, Element>>(&Parser::parseProperties)));
    EXPECT_TRUE((hasType<OfProperties<CSLFormula*, Element>>(&Parser::parseProperty)));
    EXPECT_TRUE((hasType<OfProperties<CSLStateFormula*, Element>>(&Parser::parseStateFormula)));
    EXPECT_TRUE((hasType<OfProperties<CSLPathFormula*, Element>>(&Parser::parsePathFormula)));
    EXPECT_TRUE((hasType<OfProperties<CSLProbabilityStateFormula::Operator, Element>>(&Parser::parseProbOperator)));
}

TEST(ParserOperations, AreThoseOfTheConstructorsBehindTheParsers) {
    using Parts = VornPartsConstructor;
    EXPECT_TRUE((std::is_same_v<decltype((Parts::portIdCounter)), std::uint32_t&>));
    EXPECT_TRUE((hasType<VornEventPort* (*)(const std::string&, PortDirection, bool)>(&Parts::createEventPort)));
    EXPECT_NE((static_cast<VornErrorPort* (*)(const std::string&, PortDirection, bool)>(&Parts::createErrorPort)),
              nullptr);
    EXPECT_NE((static_cast<VornErrorPort* (*)(const std::string&, PortDirection, bool, DistributionType, double)>(
                  &Parts::createErrorPort)),
              nullptr);
    EXPECT_NE(
        (static_cast<VornDataPort* (*)(const std::string&, PortDirection, VornDataTypeTag, VornValue*, const PortTag&)>(
            &Parts::createDataPort)),
        nullptr);
    EXPECT_NE((static_cast<TypedVornDataPort<VornInt>* (*)(const std::string&, PortDirection, TypedVornValue<VornInt>*,
                                                           const PortTag&)>(&Parts::createDataPort<VornInt>)),
              nullptr);
    using Package = VornPackageConstructor;
    EXPECT_TRUE((std::is_constructible_v<Package, const std::string&>));
    EXPECT_TRUE((hasType<Operation<Package, void, VornComponentDeclaration*>>(&Package::addDeclaration)));
    EXPECT_TRUE((hasType<Operation<Package, void, VornComponentImplementation*>>(&Package::addImplementation)));
    EXPECT_TRUE((
        std::is_invocable_v<decltype(&Package::getDeclarationFromCurrentPackage), const Package&, const std::string&>));
}

// A few of them at work, on elements alone.

template <class T>
std::vector<std::unique_ptr<T>> adopted(const std::vector<T*>& objects) {
    std::vector<std::unique_ptr<T>> result;
    for (T* const object : objects) result.emplace_back(object);
    return result;
}

TEST(ParserOperations, CountTheUsesOfTheLibrary) {
    const int before = util::initCount;
    ASSERT_TRUE(util::initialize());
    EXPECT_EQ(util::initCount, before + 1);
    EXPECT_TRUE(util::xercesInitialized);
    EXPECT_EQ(util::transcode(util::tagBoolTrue), "True");
    EXPECT_EQ(util::transcode(util::tagBoolFalse), "False");
    util::clean();
    EXPECT_EQ(util::initCount, before);
    EXPECT_EQ(util::xercesInitialized, before > 0);
    EXPECT_EQ(util::tagBoolTrue == nullptr, before == 0);
    util::clean();
    EXPECT_GE(util::initCount, 0) << "a call too many does nothing";
}

TEST(ParserOperations, ParseTheModesOfAnElementAlone) {
    const XmlDocument xml(
        "<modes><Mode><name>a</name><type>0</type></Mode><Mode><name>b</name><type>3</type></Mode>"
        "</modes>");
    XmlContext context;
    const ExpressionParser expressions(context);
    const TypeImplParser parser(context, &expressions);
    const auto modes = adopted(parser.parseModes(xml.root()));
    ASSERT_EQ(modes.size(), 2U);
    EXPECT_EQ(modes[0]->name(), "a");
    EXPECT_EQ(modes[1]->name(), "b");
}

TEST(ParserOperations, ParseThePortsOfAListAlone) {
    const XmlDocument xml(
        "<l>text<InEventPort><name>p</name></InEventPort><ErrorEventPort><name>q</name>"
        "<nonblocking>True</nonblocking></ErrorEventPort></l>");
    XmlContext context;
    const ExpressionParser expressions(context);
    const TypeDeclParser parser(context, &expressions);
    EXPECT_EQ(util::transcode(parser.getPortTag(PortDirection::out, PortType::event)), "OutEventPort");
    EXPECT_TRUE(parser.featureTagMatches(parser.firstChild(xml.root()), PortType::event, PortDirection::in));
    const auto ports = adopted(parser.parsePorts(xml.root()->getChildNodes(), PortType::event, PortDirection::in));
    ASSERT_EQ(ports.size(), 2U);
    EXPECT_EQ(ports[0]->direction(), PortDirection::in);
    EXPECT_EQ(ports[1]->direction(), PortDirection::out);
}

TEST(ParserOperations, ParsePackagesOfAnElementAlone) {
    const XmlDocument xml("<packages><Package><name>p</name></Package><Package><name>q</name></Package></packages>");
    XmlContext context;
    VornXmlParser parser(context);
    EXPECT_EQ(adopted(parser.parsePackages(xml.root())).size(), 2U);
    const std::unique_ptr<VornPackage> package(parser.parsePackage(parser.indexChild(xml.root(), 1)));
    EXPECT_EQ(package->name(), "q");
}

}  // namespace
}  // namespace vornrun::test
