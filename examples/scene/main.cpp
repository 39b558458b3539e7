// zan-scene: carries a deck of flat layers to the screen and tells which of them a point hits.
#include "program.h"

#include <iostream>

int main(int argc, char** argv) { return scene::run(argc, argv, std::cout, std::cerr); }
