"""show_window.py EDITOR FILE PICTURE: shows the editor with a file on a virtual screen, keeps a
picture of its window, and closes it. For machines without a display."""

import os
import sys

from virtual_desktop import DesktopError, VirtualDesktop, is_main_window, wait_until


def picture_of_main_window(desktop, process, file, path):
    """Keeps the picture once the file is open and nothing covers the window: what the editor shows
    in front of it is closed first. Gives the window."""
    title = os.path.basename(file)
    asked = set()

    def state():
        if process.poll() is not None:
            raise DesktopError(f"The editor ended early (exit code {process.returncode}).")
        windows = desktop.windows(process)
        for window in windows:
            if not is_main_window(window) and window not in asked:
                asked.add(window)
                print(f'The editor shows "{window.title}" first; closing that.', flush=True)
                desktop.close(window)
        return len(windows) == 1 and windows[0].title.startswith(title) and windows[0]

    while True:
        window = wait_until(state, f"{file} to be open in the editor's window")
        desktop.wait_for_picture(window, path)
        if len(desktop.windows(process)) == 1:
            return


def show(desktop, editor, file, picture):
    """Starts the editor, keeps the picture, and ends it."""
    screen = desktop.env["DISPLAY"]
    print(f"Starting the editor with {file} on the virtual display {screen}.", flush=True)
    process = desktop.start([editor, file])
    window = desktop.wait_for_window(process, is_main_window)
    try:
        picture_of_main_window(desktop, process, file, picture)
    except DesktopError:
        if process.poll() is None:
            desktop.take_picture(window, picture)
            print(f"What its window shows is in {picture}.", flush=True)
        raise
    print(f"The editor shows its window; a picture of it is in {picture}.", flush=True)
    code = desktop.close_all(process)
    # The editor ends with 1 in the ordinary way.
    if code not in (0, 1):
        raise DesktopError(f"The editor ended with the exit code {code}.")
    print("The editor was closed.")


def main(editor, file, picture):
    try:
        with VirtualDesktop() as desktop:
            desktop.start_sound()
            show(desktop, editor, file, picture)
    except DesktopError as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
