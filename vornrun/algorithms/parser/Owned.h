#pragma once
/// \file
/// Parts of a model while a parser puts them together. They are owned until the whole is built, so that a fault leaves
/// nothing behind; then a constructor or the parser's caller adopts them.

#include <memory>
#include <vector>

namespace vornrun::parser {

template <class T>
using Owned = std::vector<std::unique_ptr<T>>;

/// The same objects in the same order; whoever receives them owns them.
template <class T>
std::vector<T*> released(Owned<T> owned) {
    std::vector<T*> result;
    result.reserve(owned.size());
    for (std::unique_ptr<T>& object : owned) result.push_back(object.release());
    return result;
}

/// What `parse` makes of each element, in order. `parse` returns a new object, which is adopted.
template <class T, class Elements, class Parse>
Owned<T> parsedFrom(const Elements& elements, Parse parse) {
    Owned<T> result;
    result.reserve(elements.size());
    for (const auto* element : elements) result.push_back(std::unique_ptr<T>(parse(element)));
    return result;
}

/// The object as one of class T; null, and the object is deleted, if it is of another class.
template <class T, class Base>
std::unique_ptr<T> castOrDelete(std::unique_ptr<Base> object) {
    std::unique_ptr<T> result(dynamic_cast<T*>(object.get()));
    if (result != nullptr) static_cast<void>(object.release());
    return result;
}

}  // namespace vornrun::parser
