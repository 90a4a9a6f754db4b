#include "mrRecolouredImageCache.h"

#include "mrGuard.h"
#include "mrRecolouredImage.h"

#include "coHash.h"
#include "dgDuctImage.h"
#include "giColour.h"
#include "utAssert.h"

#include <algorithm>
#include <array>
#include <bit>
#include <unordered_map>
#include <vector>

namespace {

mrRecolouredImageCache* instance = nullptr;

utKillerOfmrRecolouredImageCache const killer;

/// What every image that an entry serves shares: an image keeps its size, while its pixels may change at any time.
struct Kind
{
    int width = 0;
    int height = 0;
    giColour colour;

    bool operator==(Kind const&) const = default;
};

struct KindHash
{
    std::size_t operator()(Kind const& kind) const
    {
        auto const bytes = std::bit_cast<std::array<char, sizeof(Kind)>>(kind);
        return co_bucket_of_text({bytes.data(), bytes.size()});
    }
};

/// An entry's images stand here, so that a walk touches nothing but them.
struct Entry
{
    dgDuctImage* original;
    dgDuctImage* resultant;
};

} // namespace

struct mrRecolouredImageCache::Entries
{
    /// Each row in the order of insertion.
    std::unordered_map<Kind, std::vector<Entry>, KindHash> rows;
};

mrRecolouredImageCache& mrRecolouredImageCache::singleton()
{
    return *access_singleton(utSingletonGet);
}

void mrRecolouredImageCache::delete_singleton()
{
    access_singleton(utSingletonDelete);
}

dgDuctImage* mrRecolouredImageCache::recoloured_image(dgDuctImage* image, giColour const& colour)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(image, "Args");

    return mr_guard(static_cast<dgDuctImage*>(nullptr), [&] {
        Kind const kind{image ? image->width() : 0, image ? image->height() : 0, colour};
        std::vector<Entry>& row = m_entries->rows[kind];
        // Of several matches the youngest counts. Images can have come to match after they were entered, when their
        // pixels were changed.
        auto const matches = [&](Entry const& entry) {
            return image && entry.original && image->same_as(*entry.original);
        };
        auto const found = std::find_if(row.rbegin(), row.rend(), matches);
        if (found != row.rend())
            return found->resultant;

        dgKeep const keep(image); // where there is no memory for the entry
        auto entry = std::make_unique<mrRecolouredImage>(image, colour);
        dgDuctImage* const resultant = entry->resultant_image();
        row.push_back({image, resultant});
        entry.release(); // stays for the process's life
        return resultant;
    });
}

int mrRecolouredImageCache::clear()
{
    std::size_t count = 0;
    for (auto const& [kind, row] : m_entries->rows)
        count += row.size();
    m_entries->rows.clear();
    return static_cast<int>(count);
}

mrRecolouredImageCache::mrRecolouredImageCache() : m_entries(std::make_unique<Entries>())
{
    UT_CHECK_VALID(m_check);
}

mrRecolouredImageCache::~mrRecolouredImageCache() = default;

mrRecolouredImageCache* mrRecolouredImageCache::access_singleton(utSingletonAccessAction action)
{
    if (action == utSingletonGet) {
        if (!instance)
            instance = new mrRecolouredImageCache;
        return instance;
    }
    delete instance;
    instance = nullptr;
    return nullptr;
}

utKillerOfmrRecolouredImageCache::~utKillerOfmrRecolouredImageCache()
{
    mrRecolouredImageCache::access_singleton(utSingletonDelete);
}
