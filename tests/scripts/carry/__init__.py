"""What copies of pages carry over, as an independent reader sees it. Nothing of the library is used here."""
