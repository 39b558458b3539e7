// zan-scene: projects a deck of flat layers to the screen and finds the layers under points.
#include "files.h"
#include "program.h"

#include <iostream>

int main(int argc, char** argv) {
    scene::Files::cleanUpOnSignals();
    return scene::run(argc, argv, std::cout, std::cerr);
}
