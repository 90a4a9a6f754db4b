#include "notes.h"

namespace sc {

namespace {

/// Where notes of the kind stand. What a reader found out as it read stays in that order.
int rank(scNoteKind kind)
{
    return kind == scNoteFailed ? 0 : kind == scNoteLeftOut ? 2 : 1;
}

/// @return whether the name was too long
bool shorten(std::string& name)
{
    std::size_t const size = name.size();
    name.resize(utUTF8::cut(name, scMaterial::max_text).size());
    return name.size() < size;
}

void settle(scMaterial& material)
{
    if (shorten(material.name))
        material.notes.push_back(make_note(scNoteLeftOut, "the end of its name"));
    if (material.texture.size() > scMaterial::max_text) {
        material.notes.push_back(
            make_note(scNoteFailed, "written without its texture \"%1...\": its path is longer than %2 bytes",
                      utUTF8::cut(material.texture, 100), scMaterial::max_text));
        material.texture.clear();
    }
    std::stable_sort(material.notes.begin(), material.notes.end(),
                     [](scNote const& a, scNote const& b) { return rank(a.kind) < rank(b.kind); });
}

} // namespace

scNote make_left_out(std::string const& words, std::string const& name)
{
    return name.empty() ? make_note(scNoteLeftOut, words) : make_note(scNoteLeftOut, words + " \"%1\"", name);
}

void NoteList::add(scNote note)
{
    if (!m_known.insert(note.words()).second)
        return;
    Kind& kind = m_kinds[rank(note.kind)];
    if (kind.notes.size() < scNote::max_notes)
        kind.notes.push_back(std::move(note));
    else
        ++kind.more;
}

std::vector<scNote> NoteList::finish()
{
    std::vector<scNote> all;
    for (auto& [rank, kind] : m_kinds) {
        if (kind.more > 0)
            kind.notes.push_back(make_note(kind.notes.back().kind, "and %1 more of this kind", kind.more));
        all.insert(all.end(), std::make_move_iterator(kind.notes.begin()),
                   std::make_move_iterator(kind.notes.end()));
    }
    *this = {};
    return all;
}

void settle(scScene& scene)
{
    for (scMaterial& material : scene.materials)
        settle(material);
    for (std::size_t at = 0; at < scene.images.size(); ++at)
        if (shorten(scene.images[at].name))
            scene.notes.push_back(
                make_note(scNoteLeftOut,
                          "the end of the name of embedded image %1: not carried over, longer than %2 bytes",
                          at + 1, scMaterial::max_text));
    std::stable_partition(scene.notes.begin(), scene.notes.end(),
                          [](scNote const& each) { return each.kind != scNoteFailed; });
}

} // namespace sc
