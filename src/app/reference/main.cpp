// SPDX-License-Identifier: MIT
// Writes the manual page and the shells' completions from the one description of the command line, so that they
// say what the program does: reference TEMPLATES FOLDER makes lumenvale.1, lumenvale.bash, _lumenvale and
// lumenvale.fish.
#include "app/reference/Completions.h"
#include "app/reference/ManualPage.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace {

std::string read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool write(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file || text.empty())
        std::cerr << path << " could not be made.\n";
    return file && !text.empty();
}

} // namespace

int main(int argc, char** argv)
{
    using namespace lumenvale;
    if (argc != 3) {
        std::cerr << "usage: reference TEMPLATES FOLDER\n";
        return 2;
    }
    const std::string from = argv[1] + std::string("/");
    const std::string to = argv[2] + std::string("/");
    const bool done = write(to + "lumenvale.1", manualPage()) &&
                      write(to + "lumenvale.bash", bashCompletion(read(from + "lumenvale.bash.in"))) &&
                      write(to + "_lumenvale", zshCompletion(read(from + "_lumenvale.in"))) &&
                      write(to + "lumenvale.fish", fishCompletion(read(from + "lumenvale.fish.in")));
    return done ? 0 : 1;
}
