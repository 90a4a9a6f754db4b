#include "gxMeshFiles.h"

#include "gxOpenFile.h"

#include <assimp/DefaultIOStream.h>
#include <assimp/DefaultIOSystem.h>

#include <stdexcept>
#include <utility>

namespace {

class MeshFile final : public Assimp::DefaultIOStream
{
public:
    MeshFile(gxFile file, char const* path)
        : DefaultIOStream(file.get(), path), m_size(measure(file.release()))
    {}

    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override
    {
        std::size_t const read = DefaultIOStream::Read(buffer, size, count);
        bool const in_vain = read == 0 && size > 0 && count > 0;
        m_vain_reads = in_vain ? m_vain_reads + 1 : 0;
        // The importer makes this its error message.
        if (m_vain_reads > 1000)
            throw std::runtime_error("the file ends too early");
        return read;
    }

    std::size_t FileSize() const override { return m_size; }

private:
    /// Asks the file itself: the path may lead elsewhere by now.
    static std::size_t measure(std::FILE* file)
    {
        std::fseek(file, 0, SEEK_END);
        long const size = std::ftell(file);
        std::rewind(file);
        return size < 0 ? 0 : static_cast<std::size_t>(size);
    }

    std::size_t m_size;
    int m_vain_reads = 0;
};

class MeshFiles final : public Assimp::DefaultIOSystem
{
public:
    bool Exists(char const* path) const override
    {
        utString reason;
        return gx_open_file(path, reason) != nullptr;
    }

    Assimp::IOStream* Open(char const* path, char const*) override
    {
        utString reason;
        gxFile file = gx_open_file(path, reason);
        return file ? new MeshFile(std::move(file), path) : nullptr;
    }
};

} // namespace

Assimp::IOSystem* gx_new_mesh_files()
{
    return new MeshFiles;
}
