#!/bin/sh
# Copies the application out of a mounted disk image. Usage: OSXZRUpdater.sh OLD IMAGE
# OLD is the running program's file inside its application folder (Name.app/Contents/MacOS/name).
# Started by the program as it ends. On failure the old application is put back and IMAGE is left where it is.
old=$1
image=$2

case $old in
*.app/Contents/MacOS/*) application=${old%/Contents/MacOS/*} ;;
*)
    echo "$old is not in an application folder" >&2
    exit 1
    ;;
esac

mount=$(mktemp -d "${TMPDIR:-/tmp}/veltrix-update.XXXXXX") || exit 1
hdiutil attach -nobrowse -readonly -mountpoint "$mount" "$image" || {
    rmdir "$mount"
    exit 1
}

# What a replacement that was cut off has left would be copied into, not over.
rm -rf "$application.new" "$application.old"
status=1
for new in "$mount"/*.app; do
    [ -d "$new" ] || break
    if cp -R "$new" "$application.new"; then
        mv "$application" "$application.old" && mv "$application.new" "$application" && status=0
        if [ "$status" -ne 0 ] && [ ! -e "$application" ]; then
            mv "$application.old" "$application"
        fi
    fi
    break
done

hdiutil detach "$mount"
rmdir "$mount"
rm -rf "$application.new"
if [ "$status" -eq 0 ]; then
    rm -rf "$application.old"
    rm -f "$image"
fi
exit "$status"
