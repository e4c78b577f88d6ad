// The TIPSY batch file: a template from the TIPSY installation, copied with only its four path
// slots rewritten. Nothing else in it is ours to understand, so the header and the tail travel
// byte for byte.

#include <cstddef>

#include "base/errors.hpp"
#include "base/text.hpp"
#include "model/binary_io.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/tipsy_exchange_reading.hpp"

namespace arborex {

namespace {
constexpr std::size_t kSlotSize = 256;
}  // namespace

BtpFile LoadBTPDefaults(const std::string& path) {
    BtpFile btp;
    ByteReader in(path.empty() ? path : tipsy::onDisk(path));
    in.bytes(btp.header.data(), btp.header.size());
    for (std::string& slot : btp.paths) {
        slot.assign(kSlotSize, '\0');
        in.bytes(slot.data(), kSlotSize);
    }
    btp.tail.resize(static_cast<std::size_t>(in.remaining()));
    if (!btp.tail.empty()) in.bytes(btp.tail.data(), btp.tail.size());
    return btp;
}

void CreateBTPfile(const BtpFile& btp, const std::string& path) {
    // Every slot is checked before the file is touched, so a path the format cannot hold
    // leaves no half-written batch file behind.
    std::array<std::string, 4> slots;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        slots[i] = trim(btp.paths[i]);
        if (slots[i].size() > kSlotSize)
            throw ArborexError(
                ErrBadFileName,
                "a TIPSY batch file holds paths of up to 256 characters: " + slots[i]);
        slots[i].resize(kSlotSize, '\0');
    }
    ByteWriter out(path);
    out.bytes(btp.header.data(), btp.header.size());
    for (const std::string& slot : slots) out.bytes(slot.data(), slot.size());
    if (!btp.tail.empty()) out.bytes(btp.tail.data(), btp.tail.size());
    out.finish();
}

}  // namespace arborex
