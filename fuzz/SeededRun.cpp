// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a fuzz body without libFuzzer: on the files of the command line, or else on inputs from a fixed seed, so that
// the body and what it demands stay true in the ordinary tests.
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace {

constexpr int Rounds = 1500;
constexpr std::size_t LongestInput = 1500;

using Input = std::vector<unsigned char>;

class Inputs {
  public:
    // Noise, text of the pieces that readers look for, the same in 16 bits, or the last input changed in places.
    Input Next() {
        switch (m_random() % 4) {
            case 0:
                m_last = Noise(Below(LongestInput));
                break;
            case 1:
                m_last = Pieces();
                break;
            case 2:
                m_last = Widened(Pieces());
                break;
            default:
                Change();
                break;
        }
        return m_last;
    }

  private:
    std::size_t Below(std::size_t limit) { return m_random() % limit; }

    Input Noise(std::size_t size) {
        Input input(size);
        for (unsigned char& byte : input) byte = static_cast<unsigned char>(m_random());
        return input;
    }

    Input Pieces() {
        static const std::vector<std::string> pieces = {"[",
                                                        "]",
                                                        "=",
                                                        ";",
                                                        "#",
                                                        "|",
                                                        "\n",
                                                        "\r\n",
                                                        " ",
                                                        "\t",
                                                        "\"",
                                                        "'",
                                                        "-",
                                                        "/",
                                                        "--",
                                                        "\\",
                                                        std::string(1, '\0'),
                                                        "Main",
                                                        "Version",
                                                        "[Main]\n",
                                                        "Version=1\n",
                                                        "888",
                                                        "2147483648",
                                                        "<<<END",
                                                        "file://",
                                                        "\xEF\xBB\xBF",
                                                        "\xE7\x89\x88",
                                                        std::string(260, 'x')};
        Input input;
        for (std::size_t count = Below(60); count > 0; --count) {
            const std::string& piece = pieces[Below(pieces.size())];
            input.insert(input.end(), piece.begin(), piece.end());
        }
        return input;
    }

    Input Widened(const Input& narrow) {
        const bool big = m_random() % 2 != 0;
        Input input;
        const auto add = [&](unsigned char high, unsigned char low) {
            input.push_back(big ? high : low);
            input.push_back(big ? low : high);
        };
        if (m_random() % 4 != 0) add(0xFE, 0xFF);
        for (const unsigned char byte : narrow) add(0, byte);
        return input;
    }

    void Change() {
        for (std::size_t count = 1 + Below(8); count > 0 && !m_last.empty(); --count)
            m_last[Below(m_last.size())] = static_cast<unsigned char>(m_random());
        if (m_random() % 3 == 0) m_last.resize(Below(m_last.size() + 1));
    }

    std::mt19937 m_random{20240607};
    Input m_last;
};

void RunFile(const char* name) {
    std::ifstream file(name, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) RunFile(argv[i]);
    if (argc > 1) return 0;
    Inputs inputs;
    for (int i = 0; i < Rounds; ++i) {
        const Input input = inputs.Next();
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d inputs\n", Rounds);
    return 0;
}
