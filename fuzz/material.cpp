// Material files: what is read can be written, and what is written reads as the same.
#include "fuzz.h"

#include "mrFileMat.h"
#include "utString.h"

void try_input(std::string const& bytes)
{
    MemoryFile const input(with_checksums(bytes));
    mrFileMat material;
    if (material.read(utString(input.path())) != mrFileMatReadOK)
        return;
    MemoryFile const first;
    require(material.write(utString(first.path())), "a material that was read can be written");

    mrFileMat again;
    require(again.read(utString(first.path())) == mrFileMatReadOK, "a material that was written reads");
    MemoryFile const second;
    again.write(utString(second.path()));
    require(first.bytes() == second.bytes(), "a material is the same when it is read and written once more");
}
