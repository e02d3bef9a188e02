// Writes the transparent mouse pointer: write-transparent-cursor FILE
//
// A cursor file of one monochrome picture. A pixel whose AND bit is 1 and whose XOR bit is 0 shows what is
// below it.
#include <cstdint>
#include <cstdio>
#include <vector>

namespace
{

constexpr std::uint32_t side = 32;
constexpr std::uint32_t maskBytes = side * side / 8;
constexpr std::uint32_t colourBytes = 2 * 4;
constexpr std::uint32_t bitmapHeaderBytes = 40;
constexpr std::uint32_t directoryBytes = 6 + 16;

class CursorFile
{
public:
    void byte(std::uint32_t value) { m_bytes.push_back(static_cast<unsigned char>(value & 0xFFU)); }

    void word(std::uint32_t value)
    {
        byte(value);
        byte(value >> 8U);
    }

    void doubleWord(std::uint32_t value)
    {
        word(value);
        word(value >> 16U);
    }

    void fill(std::uint32_t count, std::uint32_t value)
    {
        m_bytes.insert(m_bytes.end(), count, static_cast<unsigned char>(value));
    }

    bool save(const char *path) const
    {
        std::FILE *const file = std::fopen(path, "wb");
        if (file == nullptr) {
            return false;
        }
        const bool written = std::fwrite(m_bytes.data(), 1, m_bytes.size(), file) == m_bytes.size();
        return std::fclose(file) == 0 && written;
    }

private:
    std::vector<unsigned char> m_bytes;
};

void addDirectory(CursorFile &file)
{
    file.word(0);
    file.word(2); // a cursor, not an icon
    file.word(1); // pictures

    file.byte(side);
    file.byte(side);
    file.byte(2); // colours
    file.byte(0);
    file.word(0); // the hot spot, where the system's arrow has its own
    file.word(0);
    file.doubleWord(bitmapHeaderBytes + colourBytes + 2 * maskBytes);
    file.doubleWord(directoryBytes);
}

void addPicture(CursorFile &file)
{
    file.doubleWord(bitmapHeaderBytes);
    file.doubleWord(side);
    file.doubleWord(2 * side); // both masks
    file.word(1);              // planes
    file.word(1);              // bits per pixel
    file.doubleWord(0);        // not compressed
    file.doubleWord(2 * maskBytes);
    file.fill(16, 0); // resolution and colour counts that nobody reads

    file.doubleWord(0x000000);
    file.doubleWord(0xFFFFFF);
    file.fill(maskBytes, 0x00); // XOR mask
    file.fill(maskBytes, 0xFF); // AND mask
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::fputs("usage: write-transparent-cursor FILE\n", stderr);
        return 2;
    }
    CursorFile file;
    addDirectory(file);
    addPicture(file);
    if (!file.save(argv[1])) {
        std::perror(argv[1]);
        return 1;
    }
    return 0;
}
