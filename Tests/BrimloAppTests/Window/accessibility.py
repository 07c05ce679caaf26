#!/usr/bin/python3
"""Uses the built application through AT-SPI, as a reader of the screen does.

    accessibility.py APPLICATION

Walks every section, sheet and menu and fails on a control without a name or of a kind that tells
nothing; presses, ticks and types through AT-SPI and looks for the effect on the disk; closes the
window by the window manager while a clean runs. Makes a display and a message bus of its own.

    accessibility.py build/debug/bin/brimlo-app
"""

import glob
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), '../../../tools'))
from alone import leave_machine
from virtual_display import virtual_display

if os.environ.get('BRIMLO_OWN_BUS') != '1':
    leave_machine()
    os.environ['BRIMLO_OWN_BUS'] = '1'
    command = ['dbus-run-session', '--', sys.executable, *sys.argv]
    sys.exit(subprocess.run(command, check=False).returncode)

import pyatspi  # It asks the session bus at once.

# In milliseconds, for an answer and for a first one. By default a busy machine gets 0.8 s.
pyatspi.setTimeout(45_000, 60_000)

# What is used by a press or a key, and so needs a name.
CONTROLS = {'push button', 'check box', 'radio button', 'combo box', 'text', 'list', 'list item',
            'menu item', 'spin button', 'page tab list', 'image', 'toggle button', 'dialog'}
# What may stand around them or between.
OTHERS = {'frame', 'panel', 'label', 'heading', 'progress bar', 'notification', 'animation',
          'popup menu', 'menu', 'separator', 'scroll bar', 'layered pane', 'static', 'tool tip'}

faults = []


def fail(text):
    faults.append(text)
    print('FAULT', text)


def nodes(node):
    """All that is shown below a node, itself first."""
    if node is None or not node.getState().contains(pyatspi.STATE_SHOWING):
        return
    yield node
    for i in range(node.childCount):
        yield from nodes(node.getChildAtIndex(i))


def wait(what, condition, seconds=45):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            found = condition()
        except Exception:  # It went while we looked.
            found = None
        if found:
            return found
        time.sleep(0.05)
    raise SystemExit('it never came: ' + what)


class Application:
    def __init__(self, path, home):
        self.home = home
        environment = dict(
            os.environ, HOME=home, QT_LINUX_ACCESSIBILITY_ALWAYS_ON='1', QT_QPA_PLATFORM='xcb',
            QT_QUICK_BACKEND='software')
        self.process = subprocess.Popen([path], env=environment, stderr=subprocess.PIPE, text=True)
        self.frame = wait('the window', self.find_frame, 60)

    def find_frame(self):
        for node in pyatspi.Registry.getDesktop(0):
            if node is not None and node.name == 'brimlo':
                return node.getChildAtIndex(0)
        return None

    def find(self, role, name):
        for node in nodes(self.frame):
            if node.getRoleName() == role and (
                    node.name == name or name.endswith('*') and node.name.startswith(name[:-1])):
                return node
        return None

    def wait_for(self, role, name):
        return wait(f'{role} {name}', lambda: self.find(role, name))

    def act(self, role, name, action='Press'):
        """Does what the control offers; a reader of the screen has nothing else."""
        offered = self.wait_for(role, name).queryAction()
        names = [offered.getName(i) for i in range(offered.nActions)]
        if action not in names:
            fail(f'{role} "{name}" has no action {action}, only {names}')
            return
        offered.doAction(names.index(action))

    def press(self, name):
        self.act('push button', name)

    def open(self, role, name, shown_role, shown):
        self.act(role, name)
        self.wait_for(shown_role, shown)
        self.audit(shown)

    def double_click(self, role, name):
        box = self.wait_for(role, name).queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        subprocess.run(['xdotool', 'mousemove', str(box.x + box.width // 2),
                        str(box.y + box.height // 2), 'click', '--repeat', '2', '--delay', '80', '1'],
                       check=True)

    def type(self, field, text):
        """By the keyboard, since Qt 6.4 takes no text through AT-SPI."""
        self.wait_for('text', field).queryComponent().grabFocus()
        subprocess.run(['xdotool', 'type', '--delay', '5', text], check=True)

    def audit(self, where):
        count = 0
        for node in nodes(self.frame):
            role, name = node.getRoleName(), node.name
            count += 1
            if role not in CONTROLS and role not in OTHERS:
                fail(f'{where}: "{name}" is a {role}')
            if role in CONTROLS and not name.strip():
                fail(f'{where}: a {role} without a name')
            if role in ('push button', 'check box', 'radio button', 'list item') and \
                    node.queryAction().nActions == 0:
                fail(f'{where}: {role} "{name}" can not be pressed')
        if count < 15:
            fail(f'{where}: only {count} are there')
        print(f'{where}: {count}')


def fill(home):
    """A home with a rule of its own, some junk, two copies and a large file."""
    rules = os.path.join(home, RULES)
    os.makedirs(rules)
    with open(os.path.join(rules, 'junk.json'), 'w', encoding='utf-8') as file:
        rule = {'id': 'custom.junk', 'name': 'Junk', 'group': 'Junk', 'personas': ['general'],
                'risk': 'safe', 'paths': ['~/junk/*'], 'regenerates': 'It comes back.',
                'confidence': 'documented'}
        json.dump({'pack': 'custom', 'version': 1, 'rules': [rule]}, file)
    for i in range(JUNK):
        path = os.path.join(home, 'junk', str(i), 'data')
        os.makedirs(os.path.dirname(path))
        with open(path, 'wb') as file:
            file.write(b'x' * 5000)
    os.makedirs(os.path.join(home, 'tree'))
    for name in ('a', 'b', 'large'):
        with open(os.path.join(home, 'tree', name), 'wb') as file:
            file.write(b'x' * (60_000_000 if name == 'large' else 2_000_000))


def junk(home):
    return len(os.listdir(os.path.join(home, 'junk')))


SUPPORT = 'Library/Application Support/Brimlo'
RULES = SUPPORT + '/Rules'
JUNK = 300
SECTIONS = ['Overview', 'Smart Clean', 'Space Analyzer', 'Large Files', 'Rules', 'Duplicates',
            'History', 'Settings']


def use(app):
    home = app.home
    for section in SECTIONS:
        app.act('list item', section)
        app.wait_for('heading', section)
        wait('an end', lambda: app.find('push button', 'Scanning…') is None)
        app.audit(section)

    app.act('list item', 'Smart Clean')
    app.wait_for('list item', 'Junk, Safe, *')
    app.press('Clear selection')
    app.wait_for('label', '0 bytes selected')
    app.act('check box', 'Select all items in this group')
    app.wait_for('label', f'{JUNK} items')
    app.open('list item', 'Junk, Safe, *', 'label', 'It comes back.')
    app.open('push button', 'What do the ratings mean?', 'heading', 'How to read the ratings')
    app.press('What do the ratings mean?')
    app.open('push button', 'Preview', 'heading', 'Preview: nothing will change')
    app.press('Close')
    app.open('push button', 'Menu', 'menu item', 'About Brimlo')
    app.open('menu item', 'About Brimlo', 'dialog', 'Brimlo')
    app.press('Close')
    app.open('push button', 'Menu', 'menu item', 'Keyboard Shortcuts')
    app.open('menu item', 'Keyboard Shortcuts', 'dialog', 'Keyboard shortcuts')
    app.wait_for('list item', 'Ctrl+R, Rescan')
    app.audit('the shortcuts')
    app.press('Close')

    app.act('list item', 'Rules')
    app.press('New rule')
    app.wait_for('dialog', 'New cleanup rule')
    app.press('Advanced')
    app.audit('the editor')
    app.type('Name', 'By voice')
    app.type('Path 1', '~/tree/*')
    app.act('radio button', 'Safe')
    app.press('Use suggested wording')
    app.wait_for('label', '3 item(s) · *')
    app.press('Save rule')
    wait('the rule', lambda: len(glob.glob(os.path.join(home, RULES, '*.json'))) == 2)

    app.act('list item', 'Space Analyzer')
    app.open('push button', 'Scan home folder', 'list item', 'tree, *')
    app.double_click('list item', 'tree, *')
    app.wait_for('list item', 'large, *')
    app.open('radio button', 'Treemap', 'image', 'Treemap')
    for section, found in (('Large Files', 'large, *'), ('Duplicates', 'Kept, *')):
        app.act('list item', section)
        app.open('push button', 'Search my home folder', 'list item', found)


def close_while_cleaning(app):
    """What was begun is brought to its end without a window, and told in the journal."""
    app.act('list item', 'Smart Clean')
    app.open('push button', 'Review & Clean…', 'dialog', 'Review before cleaning')
    app.press('Clean *')
    wait('the first to go', lambda: junk(app.home) < JUNK)
    left = junk(app.home)
    subprocess.run(['xdotool', 'key', 'alt+F4'], check=True)
    wait('the end of the process', lambda: app.process.poll() is not None, 60)
    print(f'closed with {left} of {JUNK} left, ended with {app.process.returncode}')
    if left == 0:
        fail('the clean was over before the window was closed')
    if app.process.returncode != 0 or junk(app.home) != 0:
        fail(f'{junk(app.home)} were left, the program ended with {app.process.returncode}')
    text = open(os.path.join(app.home, SUPPORT, 'journal.json'), encoding='utf-8').read()
    told = len(re.findall(r'"originalPath" ?: ?"[^"]*junk\\?/\d+"', text))
    if told != JUNK:
        fail(f'the journal tells of {told} items')


def run(application):
    home = tempfile.mkdtemp(prefix='brimlo-accessibility-')
    fill(home)
    helpers = [subprocess.Popen(['openbox'], stderr=subprocess.DEVNULL),
               subprocess.Popen(['/usr/libexec/at-spi-bus-launcher', '--launch-immediately'],
                                stderr=subprocess.DEVNULL)]
    app = Application(application, home)
    try:
        use(app)
        close_while_cleaning(app)
    finally:
        for process in [app.process, *helpers]:
            process.terminate()
            process.wait()
        shutil.rmtree(home)
    for line in app.process.stderr.read().splitlines():
        if 'XDG_RUNTIME_DIR' not in line:
            fail('it said: ' + line)


def main():
    with virtual_display() as display:
        os.environ['DISPLAY'] = display
        run(sys.argv[1])
    sys.exit(1 if faults else 0)


if __name__ == '__main__':
    main()
