#pragma once
/// \file
/// The faults of the two input files.

#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "vornrun/algorithms/parser/SourcePlace.h"

namespace vornrun {

/// Any fault of an input file.
class VornXmlException : public std::exception {
  public:
    explicit VornXmlException(std::string description);
    /// \param line becomes a part of what(); it is not place()
    VornXmlException(std::string description, unsigned int line);

    /// "Error while parsing: " (with a line: "Error while parsing on line: N "), the description, and the kind of the
    /// fault in parentheses unless that is empty.
    const char* what() const noexcept override;
    /// The kind of the fault.
    virtual std::string errorTypeMsg() const { return "General parser error"; }
    /// What is wrong; may be empty.
    virtual std::string errorDescription() const { return mDescription; }

    /// Where the fault is; none when that is unknown, or when the file as a whole is at fault. Not a part of what().
    const std::optional<SourcePlace>& place() const noexcept { return mPlace; }
    void setPlace(std::optional<SourcePlace> place) { mPlace = std::move(place); }

  private:
    std::string mDescription;
    unsigned int mLine;
    bool mHasLine;
    std::optional<SourcePlace> mPlace;
    mutable std::string mWhat;  // filled by what(), which must return storage that outlives the call
};

namespace parser {

class VornXmlParserException : public VornXmlException {
  public:
    using VornXmlException::VornXmlException;
    std::string errorTypeMsg() const override { return "Parser failed."; }
};

/// The XML library could not be started.
class XmlLibraryException final : public VornXmlParserException {
  public:
    /// \param libraryText what the library says, in whole lines
    explicit XmlLibraryException(std::string libraryText);
    const std::string& libraryText() const noexcept { return mLibraryText; }

  private:
    std::string mLibraryText;
};

class VornInvalidXmlException : public VornXmlException {
  public:
    using VornXmlException::VornXmlException;
    std::string errorTypeMsg() const override { return "Invalid xml."; }
};

class VornXmlCorruptedVornException : public VornXmlException {
  public:
    using VornXmlException::VornXmlException;
    std::string errorTypeMsg() const override { return "Xml encoded invalid vorn."; }
};

/// Another thing than the expected one was found.
class VornXmlUnexpected_Exception : public VornXmlException {
  public:
    VornXmlUnexpected_Exception(std::string description, std::string expected, std::string found);
    /// "node" or "value".
    virtual std::string whatIsMissing() const = 0;
    std::string errorTypeMsg() const override;

  private:
    std::string mExpected;
    std::string mFound;
};

class VornXmlUnexpectedNodeException final : public VornXmlUnexpected_Exception {
  public:
    using VornXmlUnexpected_Exception::VornXmlUnexpected_Exception;
    std::string whatIsMissing() const override { return "node"; }
};

class VornXmlUnexpectedValueException final : public VornXmlUnexpected_Exception {
  public:
    using VornXmlUnexpected_Exception::VornXmlUnexpected_Exception;
    std::string whatIsMissing() const override { return "value"; }
};

class VornXmlNodeMissingException final : public VornXmlException {
  public:
    VornXmlNodeMissingException(std::string description, std::string child, std::string parent);
    std::string errorTypeMsg() const override;

  private:
    std::string mChild;
    std::string mParent;
};

class UnknownTypeException final : public VornXmlCorruptedVornException {
  public:
    UnknownTypeException(std::string description, std::string typeName);
    std::string errorTypeMsg() const override;

  private:
    std::string mTypeName;
};

class MutualExclusiveException final : public VornXmlCorruptedVornException {
  public:
    MutualExclusiveException(std::string description, std::string first, std::string second);
    std::string errorTypeMsg() const override;

  private:
    std::string mFirst;
    std::string mSecond;
};

}  // namespace parser
}  // namespace vornrun
