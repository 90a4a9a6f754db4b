// Writes the samples: mr_make_samples FOLDER
#include "samples.h"

#include <exception>
#include <iostream>

int main(int argument_count, char** arguments)
{
    if (argument_count != 2) {
        std::cerr << "usage: mr_make_samples FOLDER\n";
        return 2;
    }
    try {
        make_images(arguments[1]);
        make_still_life(arguments[1]);
        make_oil_lamp(arguments[1]);
        make_gear(arguments[1]);
        make_materials(arguments[1]);
        make_palettes(arguments[1]);
    } catch (std::exception const& failure) {
        std::cerr << "mr_make_samples: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
