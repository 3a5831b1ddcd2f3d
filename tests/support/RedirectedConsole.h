#pragma once
/// \file
/// Standard input and output of this process, redirected to texts for the life of an object.

#include <iostream>
#include <mutex>
#include <sstream>
#include <streambuf>
#include <string>

namespace vornrun::test {

/// Takes characters from several threads at once, as the terminal does.
class SharedTextBuffer final : public std::streambuf {
  public:
    std::string text() const {
        const std::lock_guard lock(mMutex);
        return mText;
    }
    /// How often the stream was flushed.
    int flushes() const {
        const std::lock_guard lock(mMutex);
        return mFlushes;
    }

  protected:
    int_type overflow(int_type c) override {
        const std::lock_guard lock(mMutex);
        if (!traits_type::eq_int_type(c, traits_type::eof())) mText += traits_type::to_char_type(c);
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        const std::lock_guard lock(mMutex);
        mText.append(text, static_cast<std::size_t>(size));
        return size;
    }
    int sync() override {
        const std::lock_guard lock(mMutex);
        ++mFlushes;
        return 0;
    }

  private:
    mutable std::mutex mMutex;
    std::string mText;
    int mFlushes = 0;
};

class RedirectedConsole {
  public:
    explicit RedirectedConsole(const std::string& input = "")
        : mInput(input), mFormerOutput(std::cout.rdbuf(&mOutput)), mFormerInput(std::cin.rdbuf(&mInput)) {
        std::cin.clear();
    }
    RedirectedConsole(const RedirectedConsole&) = delete;
    RedirectedConsole& operator=(const RedirectedConsole&) = delete;
    ~RedirectedConsole() {  // gives both streams back
        std::cout.rdbuf(mFormerOutput);
        std::cin.rdbuf(mFormerInput);
        std::cin.clear();
    }

    std::string output() const { return mOutput.text(); }
    int flushes() const { return mOutput.flushes(); }

  private:
    SharedTextBuffer mOutput;
    std::stringbuf mInput;
    std::streambuf* mFormerOutput;
    std::streambuf* mFormerInput;
};

}  // namespace vornrun::test
