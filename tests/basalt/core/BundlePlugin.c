/* A loadable module that the bundle tests put into a bundle as its executable. */
int BundlePluginAnswer(void) {
    return 42;
}
