#include "vornrun/algorithms/parser/VornXmlException.h"

#include <sstream>
#include <utility>

namespace vornrun {

VornXmlException::VornXmlException(std::string description)
    : mDescription(std::move(description)), mLine(0), mHasLine(false) {}

VornXmlException::VornXmlException(std::string description, unsigned int line)
    : mDescription(std::move(description)), mLine(line), mHasLine(true) {}

const char* VornXmlException::what() const noexcept {
    try {
        std::ostringstream text;
        text << "Error while parsing";
        if (mHasLine)
            text << " on line: " << mLine << " ";
        else
            text << ": ";
        text << errorDescription();
        if (const std::string type = errorTypeMsg(); !type.empty()) text << " (" << type << ")";
        mWhat = text.str();
    } catch (const std::exception&) {
        return mDescription.c_str();  // no memory for the frame
    }
    return mWhat.c_str();
}

namespace parser {

XmlLibraryException::XmlLibraryException(std::string libraryText)
    : VornXmlParserException("Failure initializing xerces"), mLibraryText(std::move(libraryText)) {}

VornXmlUnexpected_Exception::VornXmlUnexpected_Exception(std::string description, std::string expected,
                                                         std::string found)
    : VornXmlException(std::move(description)), mExpected(std::move(expected)), mFound(std::move(found)) {}

std::string VornXmlUnexpected_Exception::errorTypeMsg() const {
    return "Unexpected " + whatIsMissing() + ":\n\tExpected: " + mExpected + " .\n\tFound: " + mFound;
}

VornXmlNodeMissingException::VornXmlNodeMissingException(std::string description, std::string child, std::string parent)
    : VornXmlException(std::move(description)), mChild(std::move(child)), mParent(std::move(parent)) {}

std::string VornXmlNodeMissingException::errorTypeMsg() const {
    return "Expected child node '" + mChild + "' missing from '" + mParent + "'";
}

UnknownTypeException::UnknownTypeException(std::string description, std::string typeName)
    : VornXmlCorruptedVornException(std::move(description)), mTypeName(std::move(typeName)) {}

// In this and the next text the two sentences are joined without a blank.
std::string UnknownTypeException::errorTypeMsg() const {
    return VornXmlCorruptedVornException::errorTypeMsg() + "Unknown type " + mTypeName + " not found in package.";
}

MutualExclusiveException::MutualExclusiveException(std::string description, std::string first, std::string second)
    : VornXmlCorruptedVornException(std::move(description)), mFirst(std::move(first)), mSecond(std::move(second)) {}

std::string MutualExclusiveException::errorTypeMsg() const {
    return VornXmlCorruptedVornException::errorTypeMsg() + mFirst + " and " + mSecond + " are mutual exclusive.";
}

}  // namespace parser
}  // namespace vornrun
