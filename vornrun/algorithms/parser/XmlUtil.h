#pragma once
/// \file
/// Helpers over the DOM: start and stop of the XML library, and the reading of element contents.

#include <string>
#include <string_view>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace vornrun::parser::util {

// The state of the library in this process. It changes only in initialize() and clean(), which any threads may call at
// the same time. In between, a caller of initialize() can read it without a lock: it stays as it is until the last one
// calls clean().
extern int initCount;           ///< calls of initialize() that clean() has not undone
extern bool xercesInitialized;  ///< whether the library is started
extern XMLCh* tagBoolTrue;      ///< "True"; null while the library is not started
extern XMLCh* tagBoolFalse;     ///< "False"; null while the library is not started

/// Starts the XML library on the first call; later calls only count.
/// \return false when the library could not be started
bool initialize();
/// The same. \param fault filled with the reason, in two lines, when the library could not be started
bool initialize(std::string& fault);
/// Undoes one initialize(); the last one stops the library. Does nothing while the library is not started.
void clean();

// No element or text below may be null, but for transcode().

/// In UTF-8; empty for null. Half a surrogate pair becomes U+FFFD.
std::string transcode(const XMLCh* text);
/// The element's tag name, or its local name.
std::string nodeName(const xercesc::DOMElement* element, bool local = false);
/// Whether nodeName() is the tag.
bool elemMatchesTag(const xercesc::DOMElement* element, const XMLCh* tag, bool local = false);

/// The text content: all text below the element, in document order. References are not followed.
std::string getStringContent(const xercesc::DOMElement* element);
// Each throws VornXmlUnexpectedValueException with the description when the text is not of its kind.

/// Exactly "True" or "False".
bool getBooleanContent(const xercesc::DOMElement* element, std::string_view description);
/// 0 to 4294967295, without a sign.
unsigned int getNaturalNumberContent(const xercesc::DOMElement* element, std::string_view description);
/// -2147483648 to 2147483647.
int getIntegerNumberContent(const xercesc::DOMElement* element, std::string_view description);
/// Infinity and not-a-number included.
double getRealNumberContent(const xercesc::DOMElement* element, std::string_view description);

}  // namespace vornrun::parser::util
