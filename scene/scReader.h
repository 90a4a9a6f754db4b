// Reading scenes, meshes and images that come from anybody.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "gxImageFileUtils.h"
#include "scExport.h"
#include "scScene.h"

#include <chrono>
#include <cstdint>
#include <string_view>

enum scReadPlace
{
    scReadInChild, ///< safe for untrusted input
    scReadHere     ///< in this process: as safe as Assimp and the loaders of gdk-pixbuf are
};

struct scReadOptions
{
    scReadPlace place = scReadInChild;
    // Limits of the child.
    std::chrono::milliseconds time{60'000};
    std::uint64_t memory = std::uint64_t{2} << 30; ///< bytes of address space
    /// Path of the program that reads in the child. Empty for mr-scene-reader, which is installed with this
    /// library.
    std::string helper{};
    /// Folders in which scTextures looks for files that it does not find where the scene names them.
    std::vector<std::string> texture_folders{};
};

/// Reads each file in a child process of its own, or in this process. The results are the same either way.
///
/// A child keeps to the limits, prints nothing, and dies with this process. As far as the kernel has the means, it cannot
/// gain privileges, leave a core, write, make, rename or remove files, reach a network, start a program or a process, or
/// trace or signal one. It opens files beneath the scene's folder alone, and those that an OBJ or a glTF file names, or
/// for an image, which it is handed open, the libraries, types and fonts of its loader; the reader checks what it hands
/// over. A file that crashes its reader ends that child alone. PNG images and pixels are always read in this
/// process, which is safe. Under the address sanitizer memory is not limited.
///
/// Reading here has no limits of time and memory, and loaders may print. Assimp has one logger for the whole
/// process, to which the reader listens meanwhile: do not read here from two threads at once.
///
/// Only the constructor may throw: std::bad_alloc. Each function fills in @p reason, in words, when a file does not
/// read, "not enough memory" for example. Reasons may quote bytes of a
/// stranger's choice. A child that fails gives "reading it took longer than 60 s", "reading it crashed
/// (signal 11)", "reading it used more than 2 GiB" or "reading it gave no sensible answer"; one that cannot
/// be started "the program PATH, which reads files for others, does not start: No such file or directory".
class SC_API scReader
{
public:
    explicit scReader(scReadOptions options = {});

    scReadOptions const& options() const { return m_options; }

    /// Reads materials, embedded images and notes, in the scene's order. They replace those in @p scene.
    /// OBJ, MTL and glTF 2 have readers of the library's own, which read all materials; Assimp reads every
    /// other format. See docs/scene.md.
    /// @return whether the file is a scene; else @p scene is unchanged
    bool read_materials(std::string const& path, scScene& scene, std::string& reason) const;

    /// Reads surfaces, as gx_read_dmt_file does and with its limits. They replace those in @p scene.
    /// @return whether there is a surface; else @p scene is unchanged
    bool read_surfaces(std::string const& path, scScene& scene, std::string& reason) const;

    /// @param format  counts where the content does not tell the format
    /// @return a new image, or null
    dgCounted<dgDuctImage> read_image(std::string const& path, gxImageFileFormat format,
                                      std::string& reason) const;

    /// Reads an image that stands in a scene file.
    /// @return a new image, or null
    dgCounted<dgDuctImage> read_image(scImage const& image, std::string& reason) const;

    /// What keeps the child from harm beside its limits, as one of it found when it tried: "no new privileges", "limits",
    /// "Landlock (ABI 7)", "seccomp", as far as the kernel has them. Empty when it does not start.
    std::vector<std::string> containment() const;

    /// Whether files of the extension can be scenes.
    /// @param extension  in lower case, without the point
    static bool knows_extension(std::string const& extension);

    /// Whether a file is a scene by its first bytes alone, whatever it is called.
    /// @param beginning  8 bytes are enough
    static bool knows_beginning(std::string_view beginning);

private:
    scReadOptions m_options;
};
