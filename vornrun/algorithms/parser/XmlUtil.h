#pragma once
/// \file
/// Plain helpers over the DOM: library set-up and the reading of element contents.

#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser::util {

/// Starts the XML library on the first call; later calls only count. A failure is written to standard error.
/// \return false when the library could not be started
bool initialize();
/// Undoes one initialize(); the last one stops the library.
void clean();

std::string transcode(const XMLCh* text);
/// The element's tag name, or its local name.
std::string nodeName(const xercesc::DOMElement* element, bool local = false);
bool elemMatchesTag(const xercesc::DOMElement* element, const XMLCh* tag, bool local = false);

/// The text content.
std::string getStringContent(const xercesc::DOMElement* element);
// Each throws VornXmlUnexpectedValueException with the description when the text is not of its kind.
/// Exactly "True" or "False".
bool getBooleanContent(const xercesc::DOMElement* element, std::string_view description);
/// 0 to 4294967295, without a sign.
unsigned int getNaturalNumberContent(const xercesc::DOMElement* element, std::string_view description);
int getIntegerNumberContent(const xercesc::DOMElement* element, std::string_view description);
/// Infinity and not-a-number included.
double getRealNumberContent(const xercesc::DOMElement* element, std::string_view description);

}  // namespace vornrun::parser::util
