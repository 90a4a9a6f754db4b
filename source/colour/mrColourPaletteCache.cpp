#include "mrColourPaletteCache.h"

#include "mrGuard.h"
#include "mrSource.h"
#include "mrUtils.h"

#include "utAssert.h"
#include "utNeverDestroyed.h"

#include <utility>

namespace {

mrColourPaletteCache* instance = nullptr;

utKillerOfmrColourPaletteCache const killer;

mrPaletteFilePath key_of(utString path)
{
    mrUtils::standardize_path_name(path);
    return path;
}

} // namespace

mrColourPaletteCache& mrColourPaletteCache::singleton()
{
    return *access_singleton(utSingletonGet);
}

void mrColourPaletteCache::delete_singleton()
{
    access_singleton(utSingletonDelete);
}

int mrColourPaletteCache::empty() const
{
    UT_CHECK_VALID(m_check);
    return m_palettes.empty();
}

int mrColourPaletteCache::size() const
{
    UT_CHECK_VALID(m_check);
    return static_cast<int>(m_palettes.size());
}

int mrColourPaletteCache::palette_exists(utString const& path)
{
    UT_CHECK_VALID(m_check);
    return mr_guard(0, [&] { return m_palettes.member(key_of(path)); });
}

mrColourPalette const& mrColourPaletteCache::get_palette(utString const& path)
{
    static utNeverDestroyed<mrColourPalette> const absent;
    UT_CHECK_VALID(m_check);
    return *mr_guard(&*absent, [&] {
        mrColourPalettecoTablePrgcoPrg const& palette = m_palettes.read(key_of(path));
        UT_REQUIRE(palette, "No such palette");
        return palette ? palette.get() : &*absent;
    });
}

mrPaletteFileError mrColourPaletteCache::load_palette(utString const& path)
{
    UT_CHECK_VALID(m_check);
    return mr_guard(mrPaletteFileBadFormat, [&] { return load(path); });
}

mrPaletteFileError mrColourPaletteCache::load(utString const& path)
{
    mrPaletteFilePath const key = key_of(path);
    UT_REQUIRE(!m_palettes.member(key), "Palette already exists");
    auto palette = std::make_unique<mrColourPalette>();
    mrFault ignored;
    mrPaletteFileError const error = mrUtils::read_pcp(mrSource::from_path(key), *palette, ignored);
    if (error != mrPaletteFileOK)
        return error;
    if (palette->empty())
        return mrPaletteFileBadFormat;
    m_palettes[key] = std::move(palette);
    return mrPaletteFileOK;
}

void mrColourPaletteCache::remove_palette(utString const& path)
{
    UT_CHECK_VALID(m_check);
    mrPaletteFilePath const key = key_of(path);
    int const removed = m_palettes.remove(key);
    UT_REQUIRE(removed, "No such palette");
}

mrColourPaletteCache::mrColourPaletteCache() = default;

mrColourPaletteCache::~mrColourPaletteCache()
{
    UT_CHECK_VALID(m_check);
}

mrColourPaletteCache* mrColourPaletteCache::access_singleton(utSingletonAccessAction action)
{
    if (action == utSingletonGet) {
        if (!instance)
            instance = new mrColourPaletteCache;
        return instance;
    }
    delete instance;
    instance = nullptr;
    return nullptr;
}

utKillerOfmrColourPaletteCache::~utKillerOfmrColourPaletteCache()
{
    mrColourPaletteCache::access_singleton(utSingletonDelete);
}
