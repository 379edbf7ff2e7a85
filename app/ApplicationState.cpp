#include "app/ApplicationState.h"

namespace app {

ApplicationState& Application() {
    static ApplicationState state;
    return state;
}

} // namespace app
