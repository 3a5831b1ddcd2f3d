#include "vornrun/algorithms/parser/XmlName.h"

#include <xercesc/util/XMLString.hpp>

namespace vornrun::parser {

XmlName::XmlName(const char* text) : mText(xercesc::XMLString::transcode(text)) {}

XmlName::~XmlName() { xercesc::XMLString::release(&mText); }

}  // namespace vornrun::parser
