// A library that does not start. This program brings its own start of the library, which always fails; the dynamic
// linker prefers it.

#include <gtest/gtest.h>

#include <new>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tests/vornrun/algorithms/parser/XmlDocument.h"
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

TEST(AFailedStartOfTheLibrary, IsToldOnStandardError) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(parser::util::initialize());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error during initialization of Xerces! :\n\n");
    parser::util::clean();  // nothing to undo
}

TEST(AFailedStartOfTheLibrary, MakesTheParserFail) {
    testing::internal::CaptureStderr();
    parser::XmlContext context;
    EXPECT_EQ(faultOf([&] { VornXmlParser{context}; }),
              "Error while parsing: Failure initializing xerces (Parser failed.)");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error during initialization of Xerces! :\n\n");
}

}  // namespace
}  // namespace vornrun::test
