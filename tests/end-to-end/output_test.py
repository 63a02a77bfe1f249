import os
import unittest

from application import ALL_SET, executable
from case import MacTest
from mac import CAMERA, NETWORK

ENABLED = "2.1/2105 State: Enabled [true false false]"


class StandardOutput(MacTest):
    """Whatever becomes of it, the application goes on."""

    def setUp(self):
        super().setUp()
        self.mac.does("install", CAMERA, "2.1", "2105")
        self.mac.does("install", NETWORK, "2.1", "2105")

    def expect_no_effect(self, application):
        application.wait_for_banner(ALL_SET)
        self.mac.does("disable", CAMERA)
        application.choose("Refresh", "Camera Driver")
        application.wait_for_state("Camera Driver", "")
        self.desktop.display.close_window("Driver Manager")
        self.assertEqual(0, application.wait_for_end())
        application.wait_for_last_line()
        self.assertEqual([], application.errors)

    def test_may_be_closed(self):
        command = ["sh", "-c", 'exec "$0" >&-', executable()]
        self.expect_no_effect(self.open_application(command))

    def test_may_be_full(self):
        with open("/dev/full", "wb") as full:
            self.expect_no_effect(self.open_application(stdout=full))

    def test_may_be_a_broken_pipe(self):
        reading, writing = os.pipe()
        os.close(reading)
        with open(writing, "wb") as broken:
            self.expect_no_effect(self.open_application(stdout=broken))

    def test_may_be_a_pipe_that_nobody_reads(self):
        reading, writing = os.pipe()
        with open(reading, "rb"), open(writing, "wb", buffering=0) as pipe:
            fill(pipe)
            self.expect_no_effect(self.open_application(stdout=pipe))

    def test_takes_lines_again_once_somebody_reads(self):
        reading, writing = os.pipe()
        with open(reading, "rb", buffering=0) as reader, open(writing, "wb", buffering=0) as pipe:
            filled = fill(pipe)
            application = self.open_application(stdout=pipe)
            application.wait_for_banner(ALL_SET)
            self.assertEqual(filled, read_exactly(reader, filled))
            self.mac.does("disable", CAMERA)
            application.choose("Refresh", "Camera Driver")
            application.wait_for_state("Camera Driver", "")
            line = f"{CAMERA} 2.1/2105 State:  [false false false]\n"
            self.assertEqual(line.encode(), reader.read(len(line)))


def fill(pipe):
    """Writes into a pipe until it takes no more; says how much it took."""
    os.set_blocking(pipe.fileno(), False)
    filled = 0
    for size in (4096, 1):
        try:
            while True:
                filled += os.write(pipe.fileno(), b"x" * size)
        except BlockingIOError:
            pass
    os.set_blocking(pipe.fileno(), True)
    return filled


def read_exactly(reader, size):
    got = 0
    while got < size:
        got += len(reader.read(size - got))
    return got


if __name__ == "__main__":
    unittest.main()
