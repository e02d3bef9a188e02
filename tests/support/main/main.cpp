// The main function of a program that holds several tests: the first argument names the one to run.
#include <cstdio>
#include <cstring>

#define TEST(name) int run_##name(int argc, char **argv);
#include VELTRIX_TESTS
#undef TEST

namespace
{

struct Test {
    const char *name;
    int (*run)(int argc, char **argv);
};

constexpr Test tests[] = {
#define TEST(name) {#name, run_##name},
#include VELTRIX_TESTS
#undef TEST
};

} // namespace

int main(int argc, char **argv)
{
    for (const Test &test : tests) {
        if (argc > 1 && std::strcmp(argv[1], test.name) == 0) {
            argv[1] = argv[0];
            return test.run(argc - 1, argv + 1);
        }
    }
    std::fprintf(stderr, "usage: %s TEST [FUNCTION...], where TEST is one of\n", argv[0]);
    for (const Test &test : tests) {
        std::fprintf(stderr, "  %s\n", test.name);
    }
    return 2;
}
