#include "mrFMTexture.h"

#include "mrElementReader.h"
#include "mrElementWriter.h"
#include "mrGuard.h"

#include "utAssert.h"

#include <utility>

namespace {

utString const textures_name = "textures";
utString const texture_name = "texture";
utString const image_name_name = "image_name";
utString const layer_type_name = "layer_type";
utString const recoloured_name = "recoloured";
utString const recolour_name = "recolour";

} // namespace

mrFMTexture::mrFMTexture(utString const& image_name, mrTexLayerType layer_type, int recoloured,
                         giColour const& recolour)
    : m_image_name(image_name), m_layer_type(layer_type), m_recoloured(recoloured), m_recolour(recolour)
{
    UT_REQUIRE(!image_name.empty(), "Args");
}

mrFMTexture& mrFMTexture::operator=(mrFMTexture const& other)
{
    UT_CHECK_VALID(m_check);
    m_image_name = other.m_image_name;
    if (other.m_image_name.invalid())
        return *this;
    m_layer_type = other.m_layer_type;
    m_recoloured = other.m_recoloured;
    m_recolour = other.m_recolour;
    return *this;
}

int mrFMTexture::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_image_name.invalid();
}

int mrFMTexture::operator==(mrFMTexture const& other) const
{
    UT_CHECK_VALID(m_check);
    return m_image_name == other.m_image_name && m_layer_type == other.m_layer_type &&
           m_recoloured == other.m_recoloured && m_recolour == other.m_recolour;
}

mrFMTexture const& mrFMTexture::check() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!m_image_name.invalid(), "Args");
    return *this;
}

void mrFMTexture::xml_write(xmlElement& parent) const
{
    check();
    xmlElement& texture = parent.owner_document().create_element(texture_name);
    xmlUtils::append_child_text_element(texture, image_name_name, m_image_name);
    xmlUtils::append_child_text_element(texture, layer_type_name, mrTypes::find_word(m_layer_type));
    mr_need(mrXMLUtils::append_child_text_element_int(texture, recoloured_name, m_recoloured));
    xmlElement& recolour = xmlUtils::append_child_element(texture, recolour_name);
    mr_need(mrXMLUtils::append_child_colour_element(recolour, m_recolour));
    parent.append_child(texture);
}

int mrFMTexture::xml_read(xmlElement const& element, mrFault* fault)
{
    UT_CHECK_VALID(m_check);
    return mr_guard(fault, 0, [&] {
        mrElementReader const reader(element, fault);
        utString image_name;
        if (!reader.read_string(image_name_name, image_name) ||
            !reader.read_enum(layer_type_name, mrTypes::parse_mrTexLayerType, "not \"colour\"",
                              m_layer_type) ||
            !reader.read_flag(recoloured_name, m_recoloured) ||
            !reader.read_colour(recolour_name, m_recolour))
            return 0;
        m_image_name = std::move(image_name);
        return 1;
    });
}

xmlElement* mrXMLUtils::write_textures(xmlElement& element, mrFMTexturecoDList const& textures)
{
    return mr_write_collection(element, textures_name, [&](xmlElement& collection) {
        for (mrFMTexture const& texture : textures)
            texture.xml_write(collection);
    });
}

int mrXMLUtils::read_textures(xmlElement const& element, mrFMTexturecoDList& textures, mrFault* fault)
{
    auto const read = [&](xmlElement const& member) {
        mrFMTexture texture;
        if (!texture.xml_read(member, fault))
            return 0;
        textures.append(texture);
        return 1;
    };
    return mr_guard(fault, 0, [&] {
        return mrElementReader(element, fault).read_members(textures_name, texture_name, read);
    });
}
