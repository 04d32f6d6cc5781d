# The reader's chapters.
printf 'chapter=00:00:01:00\r\nchapter=00:00:03:00\r\n' > chapters.txt
