#pragma once
/// \file
/// Takes what the tool writes to a standard stream of this process.

#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace vornrun::test {

/// For its lifetime what is written to the stream lands here; afterwards the stream has its former buffer and format.
class CapturedStream {
  public:
    explicit CapturedStream(std::ostream& stream)
        : mStream(stream), mFormer(stream.rdbuf(mText.rdbuf())), mFormat(nullptr) {
        mFormat.copyfmt(stream);
    }
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;
    ~CapturedStream() {  // the stream outlives its borrowed buffer
        mStream.rdbuf(mFormer);
        mStream.copyfmt(mFormat);
    }
    std::string text() const { return mText.str(); }

  private:
    std::ostringstream mText;
    std::ostream& mStream;
    std::streambuf* mFormer;
    std::ios mFormat;
};

}  // namespace vornrun::test
