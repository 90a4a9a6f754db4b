#include "scScene.h"

#include "utConcat.h"

std::string scScene::material_name(std::size_t material) const
{
    std::string const& name = materials[material].name;
    return name.empty() ? ut_concat("material ", material + 1) : name;
}
