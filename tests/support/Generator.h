// Texts made at random, the same ones in every run.
#ifndef ZEL_TESTS_SUPPORT_GENERATOR_H
#define ZEL_TESTS_SUPPORT_GENERATOR_H

#include <random>
#include <string>
#include <vector>

struct Generator {
    std::vector<std::string> pieces;
    std::mt19937 random{1};

    // No more than so many of the pieces in a row.
    std::string operator()(std::size_t longest) {
        std::string text;
        for (std::size_t length = random() % (longest + 1); length != 0; --length)
            text += pieces[random() % pieces.size()];
        return text;
    }
};

#endif
