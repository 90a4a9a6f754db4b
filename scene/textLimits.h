// How much text is taken out of a scene.
#pragma once

#include "scene.h"

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

namespace mrtool {

/// Bytes of the longest name or message.
inline constexpr std::size_t max_scene_text = 4096;

/// How many things of one kind are said of one material.
inline constexpr std::size_t max_scene_words = 100;

/// The text; one that is longer than max_scene_text is cut between characters and ends in " ... (cut)".
std::string cut(std::string text);

/// Words, each once and cut, in the order of their first coming.
class Words
{
public:
    void add(std::string words);

    /// Leaves none.
    std::vector<std::string> take();

private:
    std::vector<std::string> m_words;
    std::unordered_set<std::string> m_known;
};

/// Brings all texts of the scene, but for the bytes of its images, within these bounds, and says so in it.
void keep_within_bounds(Scene& scene);

} // namespace mrtool
