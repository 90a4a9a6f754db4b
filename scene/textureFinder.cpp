#include "textureFinder.h"

#include "characterLocale.h"

#include "utUTF8.h"

#include <algorithm>
#include <cwctype>
#include <filesystem>

namespace sc {

namespace fs = std::filesystem;

namespace {

/// The same text for names that differ in case alone. A name that is not UTF-8 is read as ISO 8859-1.
std::string fold_case(std::string const& name)
{
    locale_t const characters = get_character_locale();
    std::string const whole = utUTF8::from_any(name);
    std::string folded;
    for (std::string_view left = whole; !left.empty();) {
        char32_t code = 0;
        left.remove_prefix(utUTF8::decode(left, code));
        auto const character = static_cast<wint_t>(code);
        utUTF8::append(folded,
                       static_cast<char32_t>(characters ? towlower_l(character, characters) : character));
    }
    return folded;
}

std::string find_folder(std::string const& scene_path)
{
    std::string const folder = fs::path(scene_path).parent_path().string();
    return folder.empty() ? "." : folder;
}

} // namespace

TextureFinder::TextureFinder(std::string const& scene_path, std::vector<std::string> const& folders)
    : m_scene_path(scene_path), m_folders{find_folder(scene_path)}
{
    m_folders.insert(m_folders.end(), folders.begin(), folders.end());
}

TextureFile const* TextureFinder::find(std::string const& named)
{
    auto known = m_found.find(named);
    if (known == m_found.end())
        known = m_found.emplace(named, look_for(named)).first;
    return known->second ? &*known->second : nullptr;
}

std::optional<TextureFile> TextureFinder::look_for(std::string const& named)
{
    if (std::optional<SceneFile> const file = find_scene_file_at(m_scene_path, named))
        return TextureFile{*file, false};
    std::vector<std::string> const paths = list_inner_paths(named);
    for (std::string const& folder : m_folders)
        if (std::optional<SceneFile> const file = find_in_folder(folder, paths))
            return TextureFile{*file, true};
    return look_for_any_case(paths);
}

std::optional<TextureFile> TextureFinder::look_for_any_case(std::vector<std::string> const& paths)
{
    for (std::string const& folder : m_folders)
        for (std::string const& path : paths)
            if (std::optional<SceneFile> const file = find_in_folder(folder, {spell(folder, path)}))
                if (!file->outside)
                    return TextureFile{*file, true};
    return std::nullopt;
}

/// The path as the folder has it; empty where it has none.
std::string TextureFinder::spell(std::string const& folder, std::string const& path)
{
    fs::path spelled;
    for (fs::path const& part : fs::path(path)) {
        std::error_code failed;
        if (part == ".")
            continue;
        if (part.empty() || fs::exists(folder / spelled / part, failed)) {
            spelled /= part;
            continue;
        }
        Listing const& names = list(folder, spelled.string());
        auto const found = names.find(fold_case(part.string()));
        if (found == names.end())
            return "";
        spelled /= found->second;
    }
    return spelled.string();
}

/// Lists a folder below another one. Of names that differ in case alone, the first in the order of their bytes counts.
TextureFinder::Listing const& TextureFinder::list(std::string const& folder, std::string const& below)
{
    std::string const path = (fs::path(folder) / below).string();
    if (auto const known = m_listings.find(path); known != m_listings.end())
        return known->second;
    Listing names;
    std::error_code failed;
    fs::directory_iterator at;
    if (lies_inside(path, folder))
        at = fs::directory_iterator(path, failed);
    for (; !failed && at != fs::directory_iterator(); at.increment(failed)) {
        if (m_left == 0) {
            names.clear();
            break;
        }
        --m_left;
        std::string const name = at->path().filename().string();
        auto const [same, added] = names.try_emplace(fold_case(name), name);
        same->second = std::min(same->second, name);
    }
    return m_listings.emplace(path, std::move(names)).first->second;
}

} // namespace sc
