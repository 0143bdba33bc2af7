/* test_resources.dll holds resources only: it is linked without runtime and entry point,
   and this file gives the linker a translation unit. */
typedef int test_resources_only;
