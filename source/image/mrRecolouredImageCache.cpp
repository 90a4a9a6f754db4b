#include "mrRecolouredImageCache.h"

#include "mrGuard.h"
#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "utAssert.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

mrRecolouredImageCache* instance = nullptr;

utKillerOfmrRecolouredImageCache const killer;

} // namespace

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

    // Of several matches the youngest counts, so the walk goes backwards and may stop at the first. Images
    // can have come to match after they were entered, when their pixels were changed.
    auto const matches = [&](mrRecolouredImage const* entry) {
        return entry->colour() == colour && image && image->equal(entry->original_image());
    };
    auto const oldest = std::make_reverse_iterator(m_list.begin());
    auto const found = std::find_if(std::make_reverse_iterator(m_list.end()), oldest, matches);
    if (found != oldest)
        return (*found)->resultant_image();

    return mr_guard(static_cast<dgDuctImage*>(nullptr), [&] {
        dgKeep const keep(image);
        auto entry = std::make_unique<mrRecolouredImage>(image, colour);
        dgDuctImage* const resultant = entry->resultant_image();
        m_list.append(entry.get());
        entry.release();
        return resultant;
    });
}

int mrRecolouredImageCache::clear()
{
    int const count = static_cast<int>(m_list.size());
    m_list.clear();
    return count;
}

mrRecolouredImageCache::mrRecolouredImageCache()
{
    UT_CHECK_VALID(m_check);
}

mrRecolouredImageCache::~mrRecolouredImageCache()
{
    m_list.clear();
}

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
