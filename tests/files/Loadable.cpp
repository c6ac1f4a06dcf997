// Loaded by LibraryTest.
extern "C" __attribute__((visibility("default"))) int AnswerOfPlugIn() {
    return 42;
}
