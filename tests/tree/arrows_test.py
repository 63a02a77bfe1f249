import unittest

import arrows
import cpp
import tree


class EveryInclude(unittest.TestCase):
    def test_follows_the_arrows(self):
        found = [
            line
            for path in tree.files(*cpp.SUFFIXES)
            for line in arrows.violations(path, (tree.ROOT / path).read_text())
        ]
        self.assertEqual([], found)


class TheArrows(unittest.TestCase):
    def refused(self, path, include):
        return bool(arrows.violations(path, f"#include {include}\n"))

    def test_lead_from_the_application_to_all_that_it_stands_on(self):
        for header in ("views/CardView.h", "model/SysExtInfo.h", "platform/ui/View.h", "platform/Log.h"):
            self.assertFalse(self.refused("app/main.cpp", f'"{header}"'), header)

    def test_never_lead_back(self):
        self.assertTrue(self.refused("model/SysExtInfo.h", '"views/CardView.h"'))
        self.assertTrue(self.refused("platform/ui/View.h", '"platform/Log.h"'))
        self.assertTrue(self.refused("platform/Log.h", '"platform/ui/View.h"'))
        self.assertTrue(self.refused("views/CardView.h", '"app/DriverManagerApp.h"'))

    def test_keep_the_model_from_the_toolkit(self):
        self.assertTrue(self.refused("model/SysExtInfo.h", '"platform/ui/Color.h"'))

    def test_keep_the_system_in_its_own_folder(self):
        self.assertTrue(self.refused("views/CardView.cpp", "<QWidget>"))
        self.assertTrue(self.refused("app/main.cpp", "<unistd.h>"))
        self.assertTrue(self.refused("platform/ui/Layout.cpp", '"platform/linux/Window.h"'))
        self.assertFalse(self.refused("platform/linux/Window.cpp", "<QWidget>"))

    def test_keep_the_simulator_apart(self):
        self.assertTrue(self.refused("simulator/sysextd/main.cpp", '"model/SysExtInfo.h"'))
        self.assertTrue(self.refused("simulator/core/Machine.h", "<QString>"))
        self.assertTrue(self.refused("simulator/core/Machine.h", '"simulator/bus/Types.h"'))
        self.assertTrue(self.refused("platform/linux/Window.cpp", '"simulator/core/Machine.h"'))

    def test_are_not_fooled_by_comments_and_spaces(self):
        self.assertFalse(self.refused("model/SysExtInfo.h", "<vector>\n// #include <QWidget>\n/*\n#include <QWidget>\n*/"))
        self.assertTrue(arrows.violations("model/SysExtInfo.h", "  #  include   <QWidget>\n"))

    def test_ask_for_the_path_from_the_root(self):
        self.assertTrue(self.refused("model/SysExtInfo.h", '"InstallStatus.h"'))
        self.assertTrue(self.refused("model/SysExtInfo.h", '"../views/CardView.h"'))

    def test_know_every_folder(self):
        self.assertTrue(self.refused("helpers/Other.h", "<vector>"))


if __name__ == "__main__":
    unittest.main()
