// größe
CDocument* document;
