# shellcheck shell=bash
# The demo stick, the folder that plays the computer's own drive, and the table that names them.

STICK=$ROOT/build/stick
COMPUTER=$ROOT/build/computer

# prepare_stick: fills the stick anew, with the program of the release build. Settings and folder marks that the
# program has written stay.
prepare_stick() {
    mkdir -p "$COMPUTER"
    "$PYTHON" tools/demo_stick.py "$STICK" --program build/release/program
}

# The computer's drive is a folder of its own, so that trying the program leaves no trace outside build/.
demo_drives() { printf 'C=fixed:%s;E=removable:%s' "$COMPUTER" "$STICK"; }
