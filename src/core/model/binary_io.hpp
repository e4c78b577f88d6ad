#pragma once
// Buffered little-endian readers and writers of fixed records. Files of a large project hold
// millions of small fields, so every field is a copy out of or into a large buffer.

#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/atomic_file.hpp"
#include "base/text.hpp"

namespace arborex {

static_assert(std::endian::native == std::endian::little,
              "the project file layer copies little-endian fields as they are");

class ByteWriter {
public:
    // Opens `path` for writing, replacing it. Throws ArborexError when it cannot.
    explicit ByteWriter(const std::string& path);
    // Writes into `target`, whose commit is the caller's, after finish().
    explicit ByteWriter(AtomicFile& target);
    ~ByteWriter();
    ByteWriter(const ByteWriter&) = delete;
    ByteWriter& operator=(const ByteWriter&) = delete;

    void bytes(const void* data, std::size_t size) {
        if (used_ + size > buffer_.size()) flushBuffer(size);
        if (size > buffer_.size()) {
            writeDirect(data, size);
            return;
        }
        std::memcpy(buffer_.data() + used_, data, size);
        used_ += size;
    }
    void i2(int16_t v) { bytes(&v, 2); }
    void i4(int32_t v) { bytes(&v, 4); }
    void f4(float v) { bytes(&v, 4); }
    void f8(double v) { bytes(&v, 8); }
    template <std::size_t N>
    void str(const FixedString<N>& s) {
        bytes(s.bytes.data(), N);
    }
    template <typename T, std::size_t N>
    void i2s(const std::array<T, N>& values) {
        for (auto v : values) i2(v);
    }

    // Flushes and closes (or, over an AtomicFile, hands it the rest); throws when anything
    // failed to reach the disk.
    void finish();

private:
    void flushBuffer(std::size_t incoming);
    void writeDirect(const void* data, std::size_t size);
    std::FILE* file_ = nullptr;
    AtomicFile* atomic_ = nullptr;
    std::vector<char> buffer_;
    std::size_t used_ = 0;
};

class ByteReader {
public:
    // Opens `path` for reading. Throws ArborexError when it cannot.
    explicit ByteReader(const std::string& path);
    ~ByteReader();
    ByteReader(const ByteReader&) = delete;
    ByteReader& operator=(const ByteReader&) = delete;

    // Throws ArborexError(ErrInputPastEnd) when the file ends first.
    void bytes(void* data, std::size_t size) {
        if (size <= avail_ - pos_) {
            std::memcpy(data, buffer_.data() + pos_, size);
            pos_ += size;
            return;
        }
        slowRead(data, size);
    }
    int16_t i2() { return get<int16_t>(); }
    int32_t i4() { return get<int32_t>(); }
    float f4() { return get<float>(); }
    double f8() { return get<double>(); }
    template <std::size_t N>
    void str(FixedString<N>& s) {
        bytes(s.bytes.data(), N);
    }
    template <std::size_t N>
    void i2s(std::array<int16_t, N>& values) {
        for (auto& v : values) v = i2();
    }
    void skip(std::size_t size);
    // Bytes not yet read.
    std::uint64_t remaining() const { return fileSize_ - consumed_ + (avail_ - pos_); }

private:
    template <typename T>
    T get() {
        T v;
        bytes(&v, sizeof v);
        return v;
    }
    void slowRead(void* data, std::size_t size);
    bool refill();
    std::FILE* file_ = nullptr;
    std::vector<char> buffer_;
    std::size_t pos_ = 0;
    std::size_t avail_ = 0;
    std::uint64_t fileSize_ = 0;
    std::uint64_t consumed_ = 0;  // bytes moved from the file into the buffer so far
};

}  // namespace arborex
