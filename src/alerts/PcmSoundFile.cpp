#include "alerts/PcmSoundFile.h"

#include <algorithm>
#include <system_error>

namespace tovrin {

Result<std::unique_ptr<PcmSoundFile>> PcmSoundFile::open(const std::filesystem::path& file) {
    using Opened = Result<std::unique_ptr<PcmSoundFile>>;
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return Opened::failure("not a file: " + file.string());
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return Opened::failure("can't read " + file.string());
    auto format = readPcmSoundFormat(stream);
    if (!format) return Opened::failure(format.error());
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(format.value().dataOffset));
    return std::unique_ptr<PcmSoundFile>(new PcmSoundFile(std::move(stream), format.value()));
}

PcmSoundFile::PcmSoundFile(std::ifstream stream, const PcmSoundFormat& format)
    : m_stream(std::move(stream)), m_format(format), m_framesLeft(format.frames) {}

std::size_t PcmSoundFile::read(float* out, std::size_t frameCount) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(frameCount, m_framesLeft));
    if (wanted == 0) return 0;
    m_bytes.resize(wanted * m_format.bytesPerFrame());
    m_stream.read(reinterpret_cast<char*>(m_bytes.data()), static_cast<std::streamsize>(m_bytes.size()));
    const std::size_t frames = static_cast<std::size_t>(m_stream.gcount()) / m_format.bytesPerFrame();
    convertPcmSamples(m_format, m_bytes.data(), frames, out);
    m_framesLeft = frames < wanted ? 0 : m_framesLeft - frames;
    return frames;
}

} // namespace tovrin
