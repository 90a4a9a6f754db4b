// Files that are read in a process of their own, since what reads them is not safe from strangers.
#pragma once

#include "childProcess.h"
#include "dgCounted.h"
#include "scene.h"

#include "dgDuctImage.h"
#include "gsTriUtils.h"
#include "gxImageFileUtils.h"

#include <functional>
#include <string>

namespace mrtool {

class WireReader;

/// Blocks with their owner.
struct Meshes
{
    Meshes() = default;
    ~Meshes() { gsTriUtils::delete_and_clear(blocks); }
    Meshes(Meshes const&) = delete;
    Meshes& operator=(Meshes const&) = delete;

    giTriBlockcoDListPtrcoPtrcoDList blocks;
};

/// Reads mesh files, images and scenes. Each function says in words, in @p reason, what became of a file that
/// did not read. Safe for untrusted input: the program's own process reads PNG images alone, everything else
/// is read by a child with limits, and what the child says is checked.
class UntrustedReader
{
public:
    /// @param program  the program that run_file_reader() belongs to; this one by default
    explicit UntrustedReader(std::string program = "/proc/self/exe", ChildLimits const& limits = {});

    bool meshes(std::string const& path, Meshes& meshes, std::string& reason) const;

    /// @param format  as the name has it; where the content says otherwise, the content is believed
    dgCounted<dgDuctImage> image(std::string const& path, gxImageFileFormat format,
                                 std::string& reason) const;
    /// An image that stood in a scene file.
    dgCounted<dgDuctImage> image(SceneImage const& image, std::string& reason) const;

    bool scene(std::string const& path, Scene& scene, std::string& reason) const;

private:
    bool ask(std::string const& what, std::string const& path, int input, std::string& reason,
             std::function<void(WireReader&)> const& take) const;
    dgCounted<dgDuctImage> image_from_child(std::string const& path, gxImageFileFormat format, int input,
                                            std::string& reason) const;

    std::string m_program;
    ChildLimits m_limits;
};

/// The first argument by which the program is asked to be such a child; what to read and a path follow.
inline constexpr char file_reader_argument[] = "--read-file-for-parent";

// What to read.
inline constexpr char meshes_wanted[] = "meshes";
inline constexpr char scene_wanted[] = "scene";
inline constexpr char image_wanted[] = "image:"; ///< and the number of the format

/// The child's side: reads the file and writes what is in it, or why nothing is, to standard output.
/// @return the exit status
int run_file_reader(std::string const& what, std::string const& path);

} // namespace mrtool
