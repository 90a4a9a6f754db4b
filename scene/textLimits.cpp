#include "textLimits.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <string_view>
#include <utility>

namespace mrtool {

namespace {

/// @return whether the name was too long
bool shorten(std::string& name)
{
    std::size_t const size = name.size();
    name.resize(utUTF8::cut(name, max_scene_text).size());
    return name.size() < size;
}

void bound_each(std::vector<std::string>& texts)
{
    for (std::string& text : texts)
        text = cut(std::move(text));
}

void bound(std::vector<std::string>& words)
{
    if (words.size() > max_scene_words) {
        std::string more = ut_concat("and ", words.size() - max_scene_words, " more of this kind");
        words.resize(max_scene_words);
        words.push_back(std::move(more));
    }
    bound_each(words);
}

void bound(SceneMaterial& material)
{
    bound(material.left_out);
    bound(material.notes);
    bound(material.failures);
    if (shorten(material.name))
        material.left_out.push_back("the end of its name");
    if (material.texture.size() <= max_scene_text)
        return;
    material.failures.push_back(ut_concat("written without its texture \"",
                                          utUTF8::cut(material.texture, 100),
                                          "...\": its path is longer than ", max_scene_text, " bytes"));
    material.texture.clear();
}

} // namespace

std::string cut(std::string text)
{
    constexpr std::string_view sign = " ... (cut)";
    if (text.size() > max_scene_text) {
        text.resize(utUTF8::cut(text, max_scene_text - sign.size()).size());
        text += sign;
    }
    return text;
}

void Words::add(std::string words)
{
    words = cut(std::move(words));
    if (m_known.insert(words).second)
        m_words.push_back(std::move(words));
}

std::vector<std::string> Words::take()
{
    m_known.clear();
    return std::exchange(m_words, {});
}

void keep_within_bounds(Scene& scene)
{
    for (SceneMaterial& material : scene.materials)
        bound(material);
    for (std::size_t at = 0; at < scene.images.size(); ++at)
        if (shorten(scene.images[at].name))
            scene.warnings.push_back(ut_concat("the end of the name of embedded image ", at + 1,
                                               ": not carried over, longer than ", max_scene_text, " bytes"));
    bound_each(scene.warnings);
    bound_each(scene.failures);
}

} // namespace mrtool
