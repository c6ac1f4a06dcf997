// The few system calls on the sound devices themselves.
#include "platform/midi/alsa/alsaKernel.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <sound/asequencer.h>
#include <sound/asound.h>

namespace vm {

namespace {

class Descriptor {
public:
    Descriptor(const char* path, int flags)
        : m_number(open(path, flags | O_NONBLOCK | O_CLOEXEC)) {}
    ~Descriptor() {
        if (m_number >= 0) close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Number() const { return m_number; }

private:
    const int m_number;
};

template <std::size_t size>
std::string Text(const unsigned char (&field)[size]) {
    const char* begin = reinterpret_cast<const char*>(field);
    return {begin, strnlen(begin, size)};
}

} // namespace

static_assert(sizeof(snd_seq_event) == kAlsaCellBytes);

std::optional<AlsaCardInfo> QueryAlsaCard(int card) {
    const Descriptor control(("/dev/snd/controlC" + std::to_string(card)).c_str(), O_RDONLY);
    snd_ctl_card_info info = {};
    if (ioctl(control.Number(), SNDRV_CTL_IOCTL_CARD_INFO, &info) < 0) return std::nullopt;
    return AlsaCardInfo{Text(info.id), Text(info.driver), Text(info.name), Text(info.longname)};
}

std::optional<AlsaInputPool> QueryAlsaInputPool(int sequencer, int client) {
    snd_seq_client_pool pool = {};
    pool.client = client;
    if (ioctl(sequencer, SNDRV_SEQ_IOCTL_GET_CLIENT_POOL, &pool) < 0 && errno == ENOENT)
        return std::nullopt;
    return AlsaInputPool{pool.input_pool, pool.input_free};
}

bool IsAlsaSequencerOpenable() {
    return Descriptor("/dev/snd/seq", O_RDWR).Number() >= 0;
}

} // namespace vm
