#include "model/binary_io.hpp"

#include <algorithm>
#include <cerrno>

#include "base/errors.hpp"

namespace arborex {

namespace {

constexpr std::size_t kBufferSize = 1 << 20;

[[noreturn]] void throwOpenFailure(int error, const std::string& path, bool forWriting) {
    switch (error) {
        case ENOENT:
            throw ArborexError(forWriting ? ErrPathNotFound : ErrFileNotFound, path);
        case EACCES:
        case EPERM:
        case EROFS:
            throw ArborexError(ErrPermissionDenied, path);
        default:
            throw ArborexError(ErrPathFileAccess, path);
    }
}

}  // namespace

ByteWriter::ByteWriter(const std::string& path) : buffer_(kBufferSize) {
    file_ = std::fopen(path.c_str(), "wb");
    if (!file_) throwOpenFailure(errno, path, true);
}

ByteWriter::ByteWriter(AtomicFile& target) : atomic_(&target), buffer_(kBufferSize) {}

ByteWriter::~ByteWriter() {
    if (file_) std::fclose(file_);
}

void ByteWriter::writeDirect(const void* data, std::size_t size) {
    if (atomic_) {
        atomic_->write(data, size);
        return;
    }
    if (std::fwrite(data, 1, size, file_) != size) throw ArborexError(ErrPathFileAccess);
}

void ByteWriter::flushBuffer(std::size_t /*incoming*/) {
    if (used_ > 0) writeDirect(buffer_.data(), used_);
    used_ = 0;
}

void ByteWriter::finish() {
    flushBuffer(0);
    if (atomic_) return;
    std::FILE* f = file_;
    file_ = nullptr;
    bool failed = std::fflush(f) != 0 || std::ferror(f) != 0;
    failed = std::fclose(f) != 0 || failed;
    if (failed) throw ArborexError(ErrPathFileAccess);
}

ByteReader::ByteReader(const std::string& path) {
    file_ = std::fopen(path.c_str(), "rb");
    if (!file_) throwOpenFailure(errno, path, false);
    if (std::fseek(file_, 0, SEEK_END) == 0) {
        long size = std::ftell(file_);
        fileSize_ = size > 0 ? static_cast<std::uint64_t>(size) : 0;
    }
    std::rewind(file_);
    // A small project needs no megabyte of buffer; a file that grows while read still reads in
    // buffer-sized steps.
    buffer_.resize(static_cast<std::size_t>(
        std::clamp<std::uint64_t>(fileSize_, std::uint64_t{4096}, std::uint64_t{kBufferSize})));
}

ByteReader::~ByteReader() {
    if (file_) std::fclose(file_);
}

bool ByteReader::refill() {
    pos_ = 0;
    avail_ = std::fread(buffer_.data(), 1, buffer_.size(), file_);
    consumed_ += avail_;
    return avail_ > 0;
}

void ByteReader::slowRead(void* data, std::size_t size) {
    auto* out = static_cast<char*>(data);
    while (size > 0) {
        if (pos_ == avail_ && !refill()) throw ArborexError(ErrInputPastEnd);
        std::size_t take = std::min(size, avail_ - pos_);
        std::memcpy(out, buffer_.data() + pos_, take);
        pos_ += take;
        out += take;
        size -= take;
    }
}

void ByteReader::skip(std::size_t size) {
    while (size > 0) {
        if (pos_ == avail_ && !refill()) throw ArborexError(ErrInputPastEnd);
        std::size_t take = std::min(size, avail_ - pos_);
        pos_ += take;
        size -= take;
    }
}

}  // namespace arborex
