#include "app/DriverManagerApp.h"

int main(int argc, char** argv) {
    return app::DriverManagerApp{}.main(argc, argv);
}
