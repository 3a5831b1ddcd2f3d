#include "tests/support/Xml.h"

#include <cstddef>
#include <stdexcept>

namespace vornrun::test {

namespace {

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

}  // namespace

Xml::Xml(std::string name, std::string text) : mName(std::move(name)), mText(std::move(text)) {}

Xml::Xml(std::string name, std::vector<Xml> children) : mName(std::move(name)), mChildren(std::move(children)) {}

Xml Xml::raw(std::string markup) { return Xml("", std::move(markup)); }

Xml& Xml::rename(std::string name) {
    mName = std::move(name);
    return *this;
}

Xml& Xml::text(std::string text) {
    mText = std::move(text);
    return *this;
}

Xml& Xml::attribute(const std::string& name, const std::string& value) {
    for (auto& [known, old] : mAttributes) {
        if (known == name) {
            old = value;
            return *this;
        }
    }
    mAttributes.emplace_back(name, value);
    return *this;
}

Xml& Xml::add(Xml child) {
    mChildren.push_back(std::move(child));
    return *this;
}

Xml* Xml::find(const std::string& name, unsigned int& skip) {
    for (Xml& child : mChildren) {
        if (child.mName == name && skip-- == 0) return &child;
        if (Xml* found = child.find(name, skip)) return found;
    }
    return nullptr;
}

Xml& Xml::nth(const std::string& name, unsigned int index) {
    unsigned int skip = index;
    Xml* found = find(name, skip);
    if (found == nullptr)
        throw std::logic_error("no element '" + name + "' at place " + std::to_string(index) + " in '" + mName + "'");
    return *found;
}

bool Xml::removeFirst(const std::string& name) {
    for (auto child = mChildren.begin(); child != mChildren.end(); ++child) {
        if (child->mName == name) {
            mChildren.erase(child);
            return true;
        }
        if (child->removeFirst(name)) return true;
    }
    return false;
}

Xml& Xml::remove(const std::string& name) {
    if (!removeFirst(name)) throw std::logic_error("no element '" + name + "' to remove from '" + mName + "'");
    return *this;
}

void Xml::write(std::string& out, unsigned int depth) const {
    out.append(std::size_t{2} * depth, ' ');
    if (mName.empty()) {
        out += mText + "\n";
        return;
    }
    out += "<" + mName;
    for (const auto& [name, value] : mAttributes) out += " " + name + "=\"" + escaped(value) + "\"";
    if (mText.empty() && mChildren.empty()) {
        out += "/>\n";
        return;
    }
    out += ">" + escaped(mText);
    if (!mChildren.empty()) {
        out += "\n";
        for (const Xml& child : mChildren) child.write(out, depth + 1);
        out.append(std::size_t{2} * depth, ' ');
    }
    out += "</" + mName + ">\n";
}

std::string Xml::toString() const {
    std::string result;
    write(result, 0);
    return result;
}

std::string toDocument(const Xml& root) { return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + root.toString(); }

std::string replaceOnce(std::string text, const std::string& from, const std::string& to) {
    const std::string::size_type place = text.find(from);
    if (place == std::string::npos) throw std::logic_error("\"" + from + "\" does not occur");
    return text.replace(place, from.size(), to);
}

}  // namespace vornrun::test
