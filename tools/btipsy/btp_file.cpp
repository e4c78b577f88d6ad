#include "btipsy/btp_file.hpp"

#include <sstream>

#include "base/text.hpp"

namespace arborex::btipsy {
namespace {

constexpr const char* kTemplateHeader = "Arborex btipsy batch template 1";
constexpr const char* kTemplateTail = "AGES 0 400 10\r\n";

std::string padded(const std::string& text, std::size_t size) {
    std::string bytes = text.substr(0, size);
    bytes.resize(size, '\0');
    return bytes;
}

}  // namespace

std::optional<BatchFile> parseBatchFile(const std::string& bytes) {
    if (bytes.size() < kTailOffset) return std::nullopt;
    BatchFile batch;
    batch.header = bytes.substr(0, kHeaderSize);
    for (std::size_t slot = 0; slot < batch.paths.size(); ++slot) {
        const std::string raw = bytes.substr(kHeaderSize + slot * kSlotSize, kSlotSize);
        batch.paths[slot] = trim(raw.substr(0, raw.find('\0')));
    }
    batch.tail = bytes.substr(kTailOffset);
    return batch;
}

TableAges tableAges(const BatchFile& batch) {
    std::istringstream in(batch.tail.substr(0, batch.tail.find('\0')));
    std::string word;
    TableAges ages;
    if (!(in >> word) || word != "AGES") return ages;
    TableAges read;
    if (in >> read.first >> read.last >> read.step && read.first >= 0 && read.step > 0 &&
        read.last >= read.first && read.last <= 999)
        return read;
    return ages;
}

std::string templateBytes() {
    return padded(kTemplateHeader, kHeaderSize) + std::string(4 * kSlotSize, '\0') + kTemplateTail;
}

}  // namespace arborex::btipsy
