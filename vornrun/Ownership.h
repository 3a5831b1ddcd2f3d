#pragma once
/// \file
/// Steps between owning pointers and the plain pointers of interfaces.

#include <memory>
#include <utility>
#include <vector>

namespace vornrun {

/// The object as one of a derived class. If it is none, it is deleted and the result is null.
template <class Derived, class Base>
std::unique_ptr<Derived> castOwned(std::unique_ptr<Base> object) {
    std::unique_ptr<Derived> derived(dynamic_cast<Derived*>(object.get()));
    if (derived != nullptr) static_cast<void>(object.release());
    return derived;
}

/// The objects as plain pointers, in order, for an interface that adopts them.
template <class T>
std::vector<T*> releaseAll(std::vector<std::unique_ptr<T>> objects) {
    std::vector<T*> released;
    released.reserve(objects.size());
    for (auto& object : objects) released.push_back(object.release());
    return released;
}

/// Takes ownership of all objects, in order. Nulls are left out.
template <class T>
std::vector<std::unique_ptr<T>> adoptAll(const std::vector<T*>& objects) {
    std::vector<std::unique_ptr<T>> adopted;
    adopted.reserve(objects.size());
    for (T* const object : objects) {
        if (object != nullptr) adopted.emplace_back(object);
    }
    return adopted;
}

}  // namespace vornrun
