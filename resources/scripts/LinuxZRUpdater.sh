#!/bin/sh
# Moves the new application over the old one. Usage: LinuxZRUpdater.sh OLD NEW
# Started by the program as it ends. A running program may be replaced: it keeps the file that it was started from.
# On any failure OLD is as it was and NEW is left where it is; update.log beside NEW says why.
old=$1
new=$2

exec >>"$(dirname -- "$new")/update.log" 2>&1

fail() {
    echo "$(date '+%Y-%m-%d %H:%M:%S') $old was not updated: $1; the new version is $new"
    rm -f -- "$beside"
    exit 1
}

beside=$old.new.$$
[ -f "$old" ] || fail "there is no such program"
[ ! -L "$new" ] || fail "the new version is a link"
[ -s "$new" ] || fail "there is no new version"

# Whatever an address on the way may answer: only something that can be run replaces a program.
case $(head -c 4 -- "$new" | od -An -c | tr -d ' \n') in
177ELF | '#!'*) ;;
*) fail "what was downloaded is no program" ;;
esac

# Copied beside it first, so that the last step is a rename: the program is always whole.
cp -- "$new" "$beside" || fail "it could not be copied"
chmod --reference="$old" -- "$beside" || fail "its permissions could not be set"
mv -f -- "$beside" "$old" || fail "it could not be moved"
rm -f -- "$new"
echo "$(date '+%Y-%m-%d %H:%M:%S') $old was updated"
