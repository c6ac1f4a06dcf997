// The main function of the tests that need a sequencer. They load and unload drivers' devices, so
// that they run in a machine made for it and nowhere else; they have no toolkit there.
#include <cstdio>
#include <cstdlib>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    if (!std::getenv("VMCORE_VM")) {
        std::fputs("these tests run in a virtual machine: see tests/vm/vm.py\n", stderr);
        return 1;
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
