// A library that does not start. This program has its own start of the library, which always fails; the dynamic linker
// prefers it.

#include <gtest/gtest.h>

#include <new>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tests/support/CapturedLog.h"
#include "tests/vornrun/algorithms/parser/XmlDocument.h"
#include "tools/simulator/Driver.h"
#include "vornrun/algorithms/parser/VornXmlParser.h"
#include "vornrun/algorithms/parser/XmlUtil.h"

namespace {

/// The library's own memory manager is not there before its start.
class PlainMemory final : public xercesc::MemoryManager {
  public:
    void* allocate(XMLSize_t size) override { return ::operator new(size); }
    void deallocate(void* block) override { ::operator delete(block); }
    MemoryManager* getExceptionMemoryManager() override { return this; }
};

PlainMemory plainMemory;

class StartFailure final : public xercesc::XMLException {
  public:
    StartFailure() : XMLException(__FILE__, __LINE__, &plainMemory) {}
    const XMLCh* getType() const override { return u"StartFailure"; }
};

}  // namespace

XERCES_CPP_NAMESPACE_BEGIN

void XMLPlatformUtils::Initialize(const char* const, const char* const, PanicHandler* const, MemoryManager* const) {
    throw StartFailure();
}

XERCES_CPP_NAMESPACE_END

namespace vornrun::test {
namespace {

constexpr const char* TEXT = "Error during initialization of Xerces! :\n\n";  // with an empty message

TEST(AFailedStartOfTheLibrary, GivesItsTextAndPrintsNothing) {
    testing::internal::CaptureStderr();
    std::string fault;
    EXPECT_FALSE(parser::util::initialize(fault));
    EXPECT_EQ(fault, TEXT);
    EXPECT_FALSE(parser::util::initialize());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(parser::util::initCount, 0);
    EXPECT_FALSE(parser::util::xercesInitialized);
    parser::util::clean();  // nothing to undo
    EXPECT_EQ(parser::util::initCount, 0);
}

TEST(AFailedStartOfTheLibrary, MakesTheParserFail) {
    testing::internal::CaptureStderr();
    parser::XmlContext context;
    try {
        VornXmlParser parser(context);
        FAIL() << "started";
    } catch (const parser::XmlLibraryException& fault) {
        EXPECT_STREQ(fault.what(), "Error while parsing: Failure initializing xerces (Parser failed.)");
        EXPECT_EQ(fault.libraryText(), TEXT);
        EXPECT_FALSE(fault.place());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(AFailedStartOfTheLibrary, IsPrintedByTheTool) {
    const CapturedLog log;
    testing::internal::CaptureStderr();
    EXPECT_EQ(parseModel("model.xml"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), TEXT);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(parseProperty("properties.xml").empty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), TEXT);
    const std::string what = "Error while parsing: Failure initializing xerces (Parser failed.)";
    EXPECT_EQ(log.records(), (std::vector<LogRecord>{
                                 {LogLevel::Error, "root.main", "Exception during parsing of Vorn: " + what},
                                 {LogLevel::Error, "root.main", "Exception during parsing of properties: " + what}}));
}

}  // namespace
}  // namespace vornrun::test
