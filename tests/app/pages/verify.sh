# The reader's finished disc, as a folder and as an image.
quorvelant author project.qvp -o VIDEO_TS --iso disc.iso --no-sync --quiet
