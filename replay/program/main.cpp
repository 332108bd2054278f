// touch-replay: replays recorded touch and says what it did to the view.

#include "replay/program/Program.h"

int main(int argc, char** argv) {
    return replay::RunProgram(argc, argv, {TOUCHNAV_VERSION, TOUCHNAV_PLUGIN_BESIDE});
}
