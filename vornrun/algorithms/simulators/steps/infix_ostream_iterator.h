#pragma once
/// \file
/// An output iterator that writes a delimiter between elements, and none before the first or after the last.

#include <cstddef>
#include <iterator>
#include <ostream>

namespace vornrun {

template <class T>
class infix_ostream_iterator {
  public:
    using iterator_category = std::output_iterator_tag;
    using value_type = void;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = void;

    /// \param delimiter must outlive the iterator
    infix_ostream_iterator(std::ostream& stream, const char* delimiter) : mStream(&stream), mDelimiter(delimiter) {}

    infix_ostream_iterator& operator=(const T& value) {
        if (!mFirst) *mStream << mDelimiter;
        mFirst = false;
        *mStream << value;
        return *this;
    }
    infix_ostream_iterator& operator*() { return *this; }
    infix_ostream_iterator& operator++() { return *this; }
    infix_ostream_iterator& operator++(int) { return *this; }

  private:
    std::ostream* mStream;
    const char* mDelimiter;
    bool mFirst = true;
};

}  // namespace vornrun
