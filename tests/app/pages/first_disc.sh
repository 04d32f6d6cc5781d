# The reader's film: a few seconds with sound of six channels, subtitles and chapters.
rm film.*
printf '1\n00:00:01,000 --> 00:00:02,500\nA first <i>line</i>\nand a second\n\n2\r\n00:00:04,000 --> 00:00:05,000\r\nTo the end\r\n' > said.srt
printf ';FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=4000\ntitle=One\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=4000\nEND=8000\ntitle=Two\n' > marks.txt
ffmpeg -v error -f lavfi -i testsrc=size=640x360:rate=25:duration=8 -f lavfi -i sine=duration=8 -i said.srt -i marks.txt \
  -map 0 -map 1 -map 2 -map_metadata 3 -c:v mpeg4 -c:a flac -ac 6 -c:s srt film.mkv
