#pragma once
/// \file
/// XML elements as plain values. The writers of model and property files make them; tests of faults change them.
///
///     Xml document = model.document();
///     document.first("ComponentImplementation").remove("flows");    // a fault
///     document.first("category").text("9");                         // another one
///     document.first("guard").attribute("objid", "7");              // an element to be shared ...
///     document.first("cond") = Xml("cond").attribute("objref", "7");    // ... and a reference to it

#include <string>
#include <utility>
#include <vector>

namespace vornrun::test {

/// One element: a name, attributes, a text, and child elements.
class Xml {
  public:
    explicit Xml(std::string name, std::string text = "");
    Xml(std::string name, std::vector<Xml> children);
    /// Text that is written as it is: markup of any kind, well-formed or not.
    static Xml raw(std::string markup);

    const std::string& name() const noexcept { return mName; }
    const std::string& text() const noexcept { return mText; }
    std::vector<Xml>& children() noexcept { return mChildren; }
    const std::vector<Xml>& children() const noexcept { return mChildren; }

    // Each changes the element and returns it.
    Xml& rename(std::string name);
    Xml& text(std::string text);
    Xml& attribute(const std::string& name, const std::string& value);
    Xml& add(Xml child);

    /// The descendant of that name at position `index` from 0, in document order.
    /// \throws std::logic_error when there are fewer, so that a fault test cannot pass by missing its target
    Xml& nth(const std::string& name, unsigned int index);
    Xml& first(const std::string& name) { return nth(name, 0); }
    /// Removes the first descendant of that name. \throws std::logic_error when there is none
    Xml& remove(const std::string& name);

    /// The whole as text, indented, one element a line.
    std::string toString() const;

  private:
    void write(std::string& out, unsigned int depth) const;
    Xml* find(const std::string& name, unsigned int& skip);
    bool removeFirst(const std::string& name);

    std::string mName;  // empty for raw markup
    std::string mText;
    std::vector<std::pair<std::string, std::string>> mAttributes;
    std::vector<Xml> mChildren;
};

/// An XML declaration and the element: a whole document.
std::string toDocument(const Xml& root);

/// The text with `from`, which must occur, replaced by `to` at its first place.
/// \throws std::logic_error when it does not occur
std::string replaceOnce(std::string text, const std::string& from, const std::string& to);

}  // namespace vornrun::test
