import os
import plistlib
import unittest
import unittest.mock

import support

code_in = support.load("code-in")

THIN = bytes.fromhex("cffaedfe 0c000001")
ONE_ARCHITECTURE = b"\0\0\0\1"


class AnExtension(support.WithFolder):
    def setUp(self):
        super().setUp()
        support.make_all(self.place)
        self.camera = self.place / support.CAMERA
        self.driver = self.place / support.BASE

    def write(self, file, content=THIN):
        (self.camera / file).parent.mkdir(parents=True, exist_ok=True)
        (self.camera / file).write_bytes(content)

    def bundle(self, folder, info="Contents/Info.plist", **keys):
        self.write(f"{folder}/{info}", plistlib.dumps(keys))

    def found(self):
        return [str(path.relative_to(self.camera)) for path in code_in.code_in(self.camera)]


class TheCodeInAnExtension(AnExtension):
    def test_is_a_bundle_of_every_kind(self):
        kinds = ("app", "appex", "bundle", "dext", "framework", "systemextension", "xpc")
        bundles = [f"Contents/Things/Nested.{kind}" for kind in kinds]
        for bundle in bundles:
            self.bundle(bundle)
        self.assertEqual(self.found(), bundles)

    def test_is_a_helper_with_any_place_and_name(self):
        helpers = ["Contents/Helpers/a tool", "Contents/MacOS/helper", "Contents/Resources/table.dat"]
        for helper in helpers:
            self.write(helper)
        self.assertEqual(self.found(), helpers)

    def test_is_recognized_by_each_magic_number(self):
        thin = ("feedface", "cefaedfe", "feedfacf", "cffaedfe")
        heads = [bytes.fromhex(magic) + ONE_ARCHITECTURE for magic in thin]
        heads += [bytes.fromhex(magic) + ONE_ARCHITECTURE for magic in ("cafebabe", "cafebabf")]
        heads += [bytes.fromhex(magic) + ONE_ARCHITECTURE[::-1] for magic in ("bebafeca", "bfbafeca")]
        for head in heads:
            with self.subTest(head.hex()):
                self.write("Contents/Helpers/helper", head + b"the rest")
                self.assertEqual(self.found(), ["Contents/Helpers/helper"])

    def test_is_not_any_other_file(self):
        java = bytes.fromhex("cafebabe 00000034")
        for content in (b"", b"\xcf", b"#!/bin/sh\n", java, b"<?xml version"):
            with self.subTest(content):
                self.write("Contents/Helpers/helper", content)
                self.assertEqual(self.found(), [])

    def test_includes_a_library_by_its_name(self):
        self.write("Contents/Frameworks/codec.dylib", b"")
        self.assertEqual(self.found(), ["Contents/Frameworks/codec.dylib"])

    def test_comes_before_what_contains_it(self):
        self.bundle("Contents/XPCServices/A.xpc")
        self.bundle("Contents/XPCServices/A.xpc/Contents/Frameworks/B.framework", "Resources/Info.plist")
        self.write("Contents/XPCServices/A.xpc/Contents/Frameworks/B.framework/Helpers/tool")
        self.bundle("Contents/Helpers/C.app")
        self.write("Contents/Helpers/C.app/Contents/MacOS/other")
        inside = "Contents/XPCServices/A.xpc/Contents/Frameworks/B.framework"
        expected = [f"{inside}/Helpers/tool", "Contents/Helpers/C.app/Contents/MacOS/other", inside]
        self.assertEqual(self.found(), [*expected, "Contents/Helpers/C.app", "Contents/XPCServices/A.xpc"])

    def test_is_listed_once_despite_a_link_to_it(self):
        self.write("Contents/Helpers/tool")
        os.symlink("tool", self.camera / "Contents/Helpers/link")
        self.bundle("Contents/Helpers/A.app")
        os.symlink("A.app", self.camera / "Contents/Helpers/B.app")
        self.assertEqual(self.found(), ["Contents/Helpers/A.app", "Contents/Helpers/tool"])

    def test_excludes_a_bundle_of_images_without_a_property_list(self):
        self.write("Contents/Resources/Images.bundle/image.png", b"png")
        self.assertEqual(self.found(), [])


class TheMainExecutable(AnExtension):
    def test_of_the_extension_is_signed_with_it(self):
        self.write(f"Contents/MacOS/{self.camera.stem}")
        self.assertEqual(self.found(), [])
        (self.driver / self.driver.stem).write_bytes(THIN)
        self.assertEqual(code_in.code_in(self.driver), [])

    def test_of_a_nested_bundle_is_signed_with_it(self):
        self.bundle("Contents/XPCServices/A.xpc", CFBundleExecutable="serve")
        self.write("Contents/XPCServices/A.xpc/Contents/MacOS/serve")
        self.assertEqual(self.found(), ["Contents/XPCServices/A.xpc"])

    def test_of_a_framework_with_versions_is_signed_with_it(self):
        framework = "Contents/Frameworks/Codec.framework"
        self.bundle(framework, "Versions/A/Resources/Info.plist", CFBundleExecutable="Codec")
        self.write(f"{framework}/Versions/A/Codec")
        os.symlink("A", self.camera / framework / "Versions/Current")
        os.symlink("Versions/Current/Codec", self.camera / framework / "Codec")
        self.assertEqual(self.found(), [framework])

    def test_has_the_name_of_its_bundle_by_default(self):
        self.bundle("Contents/PlugIns/A.bundle")
        self.write("Contents/PlugIns/A.bundle/Contents/MacOS/A")
        self.assertEqual(self.found(), ["Contents/PlugIns/A.bundle"])


class TheCommand(AnExtension):
    def test_stops_at_an_unreadable_file(self):
        broken = PermissionError(13, "Permission denied", "the/file")
        with unittest.mock.patch.object(code_in, "is_mach_o", side_effect=broken):
            with unittest.mock.patch("sys.argv", ["code-in", str(self.camera)]):
                with self.assertRaisesRegex(SystemExit, "^the/file: cannot be read: Permission denied$"):
                    code_in.main()
