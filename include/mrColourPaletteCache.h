// The process's store of palettes out of files.
#pragma once

#include "mrColourPalette.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"
#include "utSingleton.h"

/// Palettes, each under the path of the file that it was read from.
///
/// Every operation that takes a path uses it as mrUtils::standardize_path_name spells it, with the report of
/// that for an empty one, and leaves the caller's as it is. Created on first use, deleted when the process
/// ends or the library is unloaded. Without enough memory singleton() and remove_palette() throw std::bad_alloc and
/// change nothing. For one thread at a time.
class MR_API mrColourPaletteCache
{
public:
    static mrColourPaletteCache& singleton();

    /// Deletes the cache and its palettes; the next singleton() makes a new, empty one.
    static void delete_singleton();

    mrColourPaletteCache(mrColourPaletteCache const&) = delete;
    mrColourPaletteCache& operator=(mrColourPaletteCache const&) = delete;

    /// 1 without palettes.
    int empty() const;

    /// How many palettes there are.
    int size() const;

    /// 1 when there is a palette of that path; 0 also without enough memory to look it up.
    int palette_exists(utString const& path);

    /// The palette of that path, the cache's own until it is loaded again or removed, or the
    /// cache is deleted.
    /// @return an empty palette for an unknown path, or without enough memory to look it up, there until the library is unloaded
    /// @report "No such palette" for an unknown path
    mrColourPalette const& get_palette(utString const& path);

    /// Reads a palette file and keeps its palette, in the place of one that was read from that path before.
    /// The file is opened by its path in small letters. Safe for untrusted input.
    /// @return mrPaletteFileOpenFailed when the file cannot be opened or is no regular file,
    ///         mrPaletteFileBadFormat when it has no colour or there is not enough memory, else what
    ///         mrUtils::read_pcp says. After any error the cache is as it was. A file whose reading fails
    ///         half way counts as one that ends there
    /// @report "Palette already exists" when there is a palette of that path
    mrPaletteFileError load_palette(utString const& path);

    /// Deletes the palette of that path.
    /// @report "No such palette" for an unknown path
    void remove_palette(utString const& path);

protected:
    mrColourPaletteCache();
    ~mrColourPaletteCache();

    /// @param action  utSingletonGet makes the cache on its first use; anything else deletes it
    /// @return the cache, or null after deleting it
    static mrColourPaletteCache* access_singleton(utSingletonAccessAction action);

private:
    mrPaletteFileError load(utString const& path);

    friend class utKillerOfmrColourPaletteCache;

    mrPaletteFilePathmrColourPalettecoTablePrgcoPrgcoTable m_palettes{mrInitialSize, mrFillLimit};
    utCheckValid m_check{this};
};

/// Deletes the cache when it is destroyed; the library holds one, for its own unloading.
class MR_API utKillerOfmrColourPaletteCache
{
public:
    ~utKillerOfmrColourPaletteCache();
};
