// A host in miniature: uses the interface library, includes the component's class and loads the plug-in it is given.
#include "host/du/Symbol.h"
#include "touch/TouchWorkflow.h"

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: consumer PLUGIN\n", stderr);
        return 2;
    }
    if (!(du::Symbol("touch") == "touch")) {
        std::fputs("a name does not equal its own text\n", stderr);
        return 1;
    }
    void* plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    for (const char* name : {"HXDllInit", "HXDllTerminate", "HXDllCreateComponent"}) {
        if (dlsym(plugin, name) == nullptr) {
            std::fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
    }
    dlclose(plugin);
    if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) != nullptr) {
        std::fputs("the plug-in stays mapped after dlclose\n", stderr);
        return 1;
    }
    return 0;
}
