import unittest

from application import Application
from bus import SERVICE
from desktop import BUILD, NO_SERVICES, SERVICES, Desktop
from events import wait_until
from program import Program, QuietProgram


class ADesktop(unittest.TestCase):
    """It fails the test at whose end a program has complained."""

    def expect_complaint(self, line, program):
        desktop = Desktop(NO_SERVICES)
        desktop.start(["sh", "-c", f"echo '{line}' >&2"], program=program).wait_for_last_line()
        with self.assertRaisesRegex(AssertionError, f"sh: {line}"):
            desktop.close()

    def test_fails_where_the_application_writes_a_line_that_is_not_its_log(self):
        self.expect_complaint("QObject: no such thing", Application)

    def test_fails_where_a_quiet_program_writes_a_line(self):
        self.expect_complaint("QObject: no such thing", QuietProgram)

    def test_fails_where_the_service_complains(self):
        desktop = Desktop(SERVICES)
        state = desktop.folder / "state/kelvra-simulator"
        state.parent.mkdir()
        state.write_text("a file where a folder should be")
        desktop.start([BUILD / "bin/sysextctl", "list"], program=Program).wait_for_end()
        wait_until(lambda: desktop.bus.has(SERVICE) is False, "the service ends")
        with self.assertRaisesRegex(AssertionError, "sysextd: "):
            desktop.close()

    def test_has_nothing_against_the_log_of_the_application(self):
        desktop = Desktop(NO_SERVICES)
        desktop.start(["sh", "-c", "echo Sysex identifier x >&2"], program=Application).wait_for_last_line()
        desktop.close()


if __name__ == "__main__":
    unittest.main()
