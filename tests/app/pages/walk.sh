# The reader's finished disc.
quorvelant author project.qvp -o VIDEO_TS --no-sync --quiet
