# The reader's chapters.
printf 'chapter=00:00:01:00\r\nchapter=00:00:03:00\r\n' > chapters.txt
mkdir subs; cp media/en1.png subs/a.bmp; cp media/en2.png subs/b.bmp
